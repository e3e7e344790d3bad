#include "analytics/JSONHandler.h"

#include "analytics/MarlpostLogger.h"

#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <type_traits>
#include <utility>
#include <variant>

#include <nlohmann/json.hpp>

namespace quillbay::JSONHandler {

namespace {

using Json = nlohmann::json;

/// Appends JSON text; false as soon as a value has none.
class Writer
{
public:
    std::string text;

    bool write(const MarlpostType &value, int depth)
    {
        return std::visit([&](const auto &held) { return writeValue(held, depth); }, value.value());
    }
    bool write(const MarlpostDictionary &object, int depth) { return writeValue(object, depth); }

private:
    bool writeValue(std::nullptr_t, int)
    {
        text += "null";
        return true;
    }
    bool writeValue(bool value, int)
    {
        text += value ? "true" : "false";
        return true;
    }
    template <typename Number>
    requires(std::is_arithmetic_v<Number>) bool writeValue(Number value, int)
    {
        if constexpr (std::is_floating_point_v<Number>) {
            if (!std::isfinite(value))
                return false;
        }
        char digits[32];
        const auto result = std::to_chars(digits, digits + sizeof digits, value);
        text.append(digits, result.ptr);
        return result.ec == std::errc();
    }
    bool writeValue(const std::string &value, int)
    {
        writeString(value);
        return true;
    }
    bool writeValue(MarlpostType::Date value, int)
    {
        writeString(marlpostDateText(value));
        return true;
    }
    bool writeValue(const MarlpostType::Url &value, int)
    {
        writeString(value.text);
        return true;
    }
    bool writeValue(const MarlpostArray &array, int depth)
    {
        if (depth >= MaximumDepth)
            return false;
        char separator = '[';
        for (const MarlpostType &value : array) {
            text += std::exchange(separator, ',');
            if (!write(value, depth + 1))
                return false;
        }
        text += array.empty() ? "[]" : "]";
        return true;
    }
    bool writeValue(const MarlpostDictionary &object, int depth)
    {
        if (depth >= MaximumDepth)
            return false;
        char separator = '{';
        for (const auto &[key, value] : object) {
            text += std::exchange(separator, ',');
            writeString(key);
            text += ':';
            if (!write(value, depth + 1))
                return false;
        }
        text += object.isEmpty() ? "{}" : "}";
        return true;
    }

    void writeString(std::string_view value)
    {
        const auto needsCare = [](char c) {
            return c == '"' || c == '\\' || static_cast<signed char>(c) < 0x20;
        };
        text += '"';
        if (std::none_of(value.begin(), value.end(), needsCare))
            text += value; // plain ASCII
        else
            writeEscaped(validUtf8(value));
        text += '"';
    }

    void writeEscaped(std::string_view value)
    {
        for (const char c : value) {
            switch (c) {
            case '"':
                text += "\\\"";
                break;
            case '\\':
                text += "\\\\";
                break;
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            case '\t':
                text += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) >= 0x20) {
                    text += c;
                } else {
                    constexpr std::string_view Digits = "0123456789abcdef";
                    text += "\\u00";
                    text += Digits[std::size_t(c >> 4)];
                    text += Digits[std::size_t(c & 15)];
                }
            }
        }
    }

    static std::string validUtf8(std::string_view value)
    {
        return QString::fromUtf8(value.data(), qsizetype(value.size())).toStdString();
    }
};

template <typename Value>
std::optional<std::string> serialize(const Value &value)
{
    Writer writer;
    if (writer.write(value, 0))
        return std::move(writer.text);
    MarlpostLogger::warning("object isn't valid and can't be serialzed to JSON");
    return {};
}

/// What the parser calls, with every value rejected: the base of those that want some. Depth is that of the
/// value, the outermost one has 0.
struct Events : nlohmann::json_sax<Json>
{
    int depth = 0;

    bool open() { return ++depth <= MaximumDepth; }
    bool binary(binary_t &) override { return false; }
    bool parse_error(std::size_t, const std::string &, const Json::exception &) override { return false; }
};

/// Builds a dictionary. Recursion would have a depth that the text decides.
class Builder final : public Events
{
public:
    MarlpostDictionary result;

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override
    {
        return value <= std::uint64_t(INT64_MAX) ? add(std::int64_t(value)) : add(value);
    }
    bool number_float(number_float_t value, const string_t &) override { return add(value); }
    bool string(string_t &value) override { return add(std::move(value)); }
    bool start_object(std::size_t) override
    {
        m_open.emplace_back(MarlpostDictionary());
        return open();
    }
    bool start_array(std::size_t) override
    {
        if (depth == 0)
            return false;
        m_open.emplace_back(MarlpostArray());
        return open();
    }
    bool key(string_t &value) override
    {
        m_open.back().key = std::move(value);
        return true;
    }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

private:
    struct Container
    {
        explicit Container(std::variant<MarlpostArray, MarlpostDictionary> empty)
            : values(std::move(empty))
        {
        }
        std::variant<MarlpostArray, MarlpostDictionary> values;
        std::string key;
    };

    bool add(MarlpostType value)
    {
        if (m_open.empty())
            return false;
        Container &container = m_open.back();
        if (auto *array = std::get_if<MarlpostArray>(&container.values))
            array->push_back(std::move(value));
        else
            std::get<MarlpostDictionary>(container.values).set(container.key, std::move(value));
        return true;
    }

    bool close()
    {
        --depth;
        Container closed = std::move(m_open.back());
        m_open.pop_back();
        if (!m_open.empty())
            return std::visit([this](auto &values) { return add(std::move(values)); }, closed.values);
        result = std::move(std::get<MarlpostDictionary>(closed.values));
        return true;
    }

    std::vector<Container> m_open;
};

class FactReader final : public Events
{
public:
    ObjectFacts facts;

    bool null() override { return depth > 0; }
    bool boolean(bool) override { return see(); }
    bool number_integer(number_integer_t) override { return see(); }
    bool number_unsigned(number_unsigned_t) override { return see(); }
    bool number_float(number_float_t, const string_t &) override { return see(); }
    bool string(string_t &value) override
    {
        if (depth == 1 && m_key == "event")
            facts.event = value;
        return see();
    }
    bool start_object(std::size_t) override { return (depth == 0 || see()) && open(); }
    bool start_array(std::size_t) override { return see() && open(); }
    bool key(string_t &value) override
    {
        if (depth == 1) {
            m_key = value;
            facts.hasId = facts.hasId || value == "id";
        }
        return true;
    }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

private:
    /// A value other than null.
    bool see()
    {
        if (depth == 1 && m_key == "$distinct_id")
            facts.hasDistinctId = true;
        return depth > 0;
    }
    bool close()
    {
        --depth;
        return true;
    }

    std::string m_key; ///< Of the outermost object.
};

template <typename Handler>
bool read(std::string_view text, Handler &handler)
{
    if (Json::sax_parse(text.begin(), text.end(), &handler))
        return true;
    MarlpostLogger::warning("exception decoding object data");
    return false;
}

} // namespace

std::optional<std::string> serializeJSONObject(const MarlpostDictionary &object)
{
    return serialize(object);
}

std::optional<std::string> serializeJSONObject(const MarlpostType &value)
{
    return serialize(value);
}

std::optional<std::string> encodeAPIData(std::span<const StoredEntity> batch)
{
    if (batch.empty())
        return {};
    constexpr std::size_t IdSize = 20; // ,"id":-2147483648 and a comma
    std::size_t size = 2;
    for (const StoredEntity &entity : batch)
        size += entity.json.size() + IdSize;
    std::string text;
    text.reserve(size);
    for (const StoredEntity &entity : batch) {
        const std::size_t end = entity.json.find_last_of('}');
        if (end == std::string::npos)
            continue;
        const std::size_t last = entity.json.find_last_not_of(" \t\r\n", end - 1);
        text += text.empty() ? '[' : ',';
        text.append(entity.json, 0, end);
        text += entity.json[last] == '{' ? "\"id\":" : ",\"id\":";
        text += std::to_string(entity.id);
        text += '}';
    }
    if (text.empty())
        return {};
    text += ']';
    return text;
}

std::optional<MarlpostDictionary> deserializeData(std::string_view text)
{
    Builder builder;
    if (!read(text, builder))
        return {};
    return std::move(builder.result);
}

std::optional<ObjectFacts> readFacts(std::string_view text)
{
    FactReader reader;
    if (!read(text, reader))
        return {};
    return std::move(reader.facts);
}

} // namespace quillbay::JSONHandler
