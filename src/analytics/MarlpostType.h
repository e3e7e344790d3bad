#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <chrono>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillbay {

class MarlpostType;

/// String keys with values of the permitted types; each key once, in the order in which they were first set.
/// A look-up walks the entries: property dictionaries have some twenty of them, for which that beats hashing.
/// A plain value; copies are deep, so hand one on with std::move. Keys are UTF-8.
class MarlpostDictionary
{
public:
    using Entry = std::pair<std::string, MarlpostType>;
    using Entries = std::vector<Entry>;

    MarlpostDictionary() = default;
    /// Of equal keys the last one counts.
    MarlpostDictionary(std::initializer_list<Entry> entries);

    bool isEmpty() const { return size() == 0; }
    std::size_t size() const;
    Entries::const_iterator begin() const;
    Entries::const_iterator end() const;

    /// Null where the key is missing. Valid until the next change.
    const MarlpostType *find(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    /// The string under the key; null where there is none or another type.
    const std::string *findString(std::string_view key) const;

    /// Replaces in place, or appends.
    void set(std::string_view key, MarlpostType value);
    /// Appends without looking for the key, which the caller knows to be new.
    void append(std::string key, MarlpostType value);
    /// Sets every entry of `other`: its values win.
    void merge(const MarlpostDictionary &other);
    void merge(MarlpostDictionary &&other);
    /// Whether there was one.
    bool remove(std::string_view key);
    void clear();

    /// The order of the entries does not count.
    bool operator==(const MarlpostDictionary &other) const;

private:
    Entries m_entries;
};

using MarlpostArray = std::vector<MarlpostType>;

/// A permitted property value: null, boolean, integer of any width and sign, float, double, string (UTF-8),
/// date (whole milliseconds, UTC), URL (its encoded text), or an array or dictionary of these. What is none
/// of them does not compile. A plain value of 40 bytes over std::variant and std::string: it goes between
/// threads without shared parts, and becomes JSON text without another conversion, which ruled out QVariant.
class MarlpostType
{
public:
    using Date = std::chrono::sys_time<std::chrono::milliseconds>;
    struct Url
    {
        std::string text; ///< Absolute and encoded.
        bool operator==(const Url &) const = default;
    };
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, float, double, std::string,
                               Date, Url, MarlpostArray, MarlpostDictionary>;

    // The conversions are implicit: properties are written as {{"app_name", name}, {"count", 3}}.
    MarlpostType(std::nullptr_t = nullptr) {}
    template <std::same_as<bool> T>
    MarlpostType(T value)
        : m_value(value)
    {
    }
    template <std::integral T>
    requires(!std::same_as<T, bool>) MarlpostType(T value)
        : m_value(asInteger(value))
    {
    }
    MarlpostType(float value)
        : m_value(value)
    {
    }
    MarlpostType(double value)
        : m_value(value)
    {
    }
    MarlpostType(const char *text)
        : m_value(std::string(text))
    {
    }
    MarlpostType(std::string text)
        : m_value(std::move(text))
    {
    }
    MarlpostType(std::string_view text)
        : m_value(std::string(text))
    {
    }
    MarlpostType(const QString &text)
        : m_value(text.toStdString())
    {
    }
    MarlpostType(Date date)
        : m_value(date)
    {
    }
    MarlpostType(const QDateTime &date)
        : m_value(Date(std::chrono::milliseconds(date.toMSecsSinceEpoch())))
    {
    }
    MarlpostType(Url url)
        : m_value(std::move(url))
    {
    }
    MarlpostType(const QUrl &url)
        : m_value(Url{url.toEncoded().toStdString()})
    {
    }
    MarlpostType(MarlpostArray values)
        : m_value(std::move(values))
    {
    }
    MarlpostType(MarlpostDictionary values)
        : m_value(std::move(values))
    {
    }

    const Value &value() const { return m_value; }
    /// Null where the value is of another type.
    template <typename T>
    const T *get() const
    {
        return std::get_if<T>(&m_value);
    }
    bool isNull() const { return get<std::nullptr_t>() != nullptr; }
    /// A number of any kind as a double; 0 for what is none (booleans included).
    double toDouble() const;

    /// False for what JSON cannot hold: a float or double that is not finite, here or nested.
    bool isValid() const;
    /// The type's name, for messages: "String", "Int", "UInt", "Double", "Float", "Bool", "Date", "URL",
    /// "Null", "Array", "Dictionary".
    std::string_view typeName() const;
    /// Readable text for messages; JSON where the value has a JSON form.
    std::string description() const;

    /// Numbers are equal by value whatever their kind; a boolean is no number. After a restart the archived
    /// properties have dates and URLs as strings, and these are equal to their text for that reason.
    bool operator==(const MarlpostType &other) const;

private:
    template <typename T>
    static Value asInteger(T value)
    {
        if constexpr (std::is_signed_v<T>)
            return std::int64_t(value);
        else
            return std::uint64_t(value);
    }

    Value m_value;
};

/// "yyyy-MM-dd'T'HH:mm:ss.SSS'Z'" in UTC.
std::string marlpostDateText(MarlpostType::Date date);

inline std::size_t MarlpostDictionary::size() const
{
    return m_entries.size();
}

inline MarlpostDictionary::Entries::const_iterator MarlpostDictionary::begin() const
{
    return m_entries.begin();
}

inline MarlpostDictionary::Entries::const_iterator MarlpostDictionary::end() const
{
    return m_entries.end();
}

} // namespace quillbay
