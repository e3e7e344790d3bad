#include "analytics/MarlpostType.h"

#include "analytics/JSONHandler.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

namespace quillbay {

namespace {

auto entryOf(auto &entries, std::string_view key)
{
    return std::find_if(entries.begin(), entries.end(),
                        [&](const auto &entry) { return entry.first == key; });
}

template <typename T>
constexpr bool isInteger = std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t>;
template <typename T>
constexpr bool isNumber = isInteger<T> || std::is_floating_point_v<T>;

/// The text that JSON has for the value, if that is a string.
std::optional<std::string> jsonString(const MarlpostType &value)
{
    if (const auto *text = value.get<std::string>())
        return *text;
    if (const auto *date = value.get<MarlpostType::Date>())
        return marlpostDateText(*date);
    if (const auto *url = value.get<MarlpostType::Url>())
        return url->text;
    return {};
}

} // namespace

MarlpostDictionary::MarlpostDictionary(std::initializer_list<Entry> entries)
{
    m_entries.reserve(entries.size());
    for (const Entry &entry : entries)
        set(entry.first, entry.second);
}

const MarlpostType *MarlpostDictionary::find(std::string_view key) const
{
    const auto entry = entryOf(m_entries, key);
    return entry == m_entries.end() ? nullptr : &entry->second;
}

const std::string *MarlpostDictionary::findString(std::string_view key) const
{
    const MarlpostType *value = find(key);
    return value ? value->get<std::string>() : nullptr;
}

void MarlpostDictionary::set(std::string_view key, MarlpostType value)
{
    const auto entry = entryOf(m_entries, key);
    if (entry == m_entries.end())
        m_entries.emplace_back(key, std::move(value));
    else
        entry->second = std::move(value);
}

void MarlpostDictionary::append(std::string key, MarlpostType value)
{
    m_entries.emplace_back(std::move(key), std::move(value));
}

void MarlpostDictionary::merge(const MarlpostDictionary &other)
{
    merge(MarlpostDictionary(other));
}

void MarlpostDictionary::merge(MarlpostDictionary &&other)
{
    for (Entry &entry : other.m_entries) {
        const auto own = entryOf(m_entries, entry.first);
        if (own == m_entries.end())
            m_entries.push_back(std::move(entry));
        else
            own->second = std::move(entry.second);
    }
    other.clear();
}

bool MarlpostDictionary::remove(std::string_view key)
{
    const auto entry = entryOf(m_entries, key);
    if (entry == m_entries.end())
        return false;
    m_entries.erase(entry);
    return true;
}

void MarlpostDictionary::clear()
{
    m_entries.clear();
}

bool MarlpostDictionary::operator==(const MarlpostDictionary &other) const
{
    return size() == other.size() && std::all_of(begin(), end(), [&](const Entry &entry) {
               const MarlpostType *value = other.find(entry.first);
               return value && *value == entry.second;
           });
}

double MarlpostType::toDouble() const
{
    return std::visit(
        []<typename T>(const T &value) {
            if constexpr (isNumber<T>)
                return double(value);
            else
                return 0.0;
        },
        m_value);
}

bool MarlpostType::isValid() const
{
    return std::visit(
        []<typename T>(const T &value) {
            if constexpr (std::is_floating_point_v<T>)
                return std::isfinite(value);
            else if constexpr (std::is_same_v<T, MarlpostArray>)
                return std::all_of(value.begin(), value.end(), [](const auto &v) { return v.isValid(); });
            else if constexpr (std::is_same_v<T, MarlpostDictionary>)
                return std::all_of(value.begin(), value.end(),
                                   [](const auto &e) { return e.second.isValid(); });
            else
                return true;
        },
        m_value);
}

std::string_view MarlpostType::typeName() const
{
    constexpr std::string_view Names[] = {"Null",   "Bool", "Int", "UInt",  "Float",     "Double",
                                          "String", "Date", "URL", "Array", "Dictionary"};
    static_assert(std::size(Names) == std::variant_size_v<Value>);
    return Names[m_value.index()];
}

std::string MarlpostType::description() const
{
    if (auto text = jsonString(*this))
        return *std::move(text);
    if (isValid())
        return JSONHandler::serializeJSONObject(*this).value_or(std::string(typeName()));
    // Only a number that is not finite, or something with such a number in it.
    return get<float>() || get<double>() ? std::to_string(toDouble()) : std::string(typeName());
}

bool MarlpostType::operator==(const MarlpostType &other) const
{
    const auto equals = [&]<typename A, typename B>(const A &a, const B &b) {
        if constexpr (isInteger<A> && isInteger<B>) {
            return std::cmp_equal(a, b);
        } else if constexpr (isNumber<A> && isNumber<B>) {
            return double(a) == double(b);
        } else if constexpr (std::is_same_v<A, B>) {
            return a == b;
        } else {
            const auto text = jsonString(*this);
            return text && text == jsonString(other);
        }
    };
    return std::visit(equals, m_value, other.m_value);
}

std::string marlpostDateText(MarlpostType::Date date)
{
    using namespace std::chrono;
    const auto day = floor<days>(date);
    const year_month_day calendar(day);
    const hh_mm_ss time(date - day);
    char text[48];
    const int length = std::snprintf(
        text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(calendar.year()),
        unsigned(calendar.month()), unsigned(calendar.day()), int(time.hours().count()),
        int(time.minutes().count()), int(time.seconds().count()), int(time.subseconds().count()));
    return std::string(text, length > 0 ? std::min<std::size_t>(std::size_t(length), sizeof text - 1) : 0);
}

} // namespace quillbay
