#include "foundation/JsonFields.h"

#include "foundation/Uuid.h"

#include <cmath>

namespace quillbay::json {

namespace {

constexpr int deepestRecord = 64;

Error mismatch(const char *key)
{
    return {DecodeError::Kind::TypeMismatch,
            QStringLiteral("The value of \"%1\" has another type.").arg(QLatin1String(key))};
}

QString toText(const Json &value, const char *key)
{
    if (!value.is_string())
        throw mismatch(key);
    return QString::fromStdString(value.get_ref<const std::string &>());
}

/// Whether it nests deeper than any record does. Right for JSON; of other text it may say anything.
bool isTooDeep(const QByteArray &text)
{
    int depth = 0;
    bool inString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"')
            inString = !inString;
        else if (c == '\\' && inString)
            ++i;
        else if (!inString && (c == '{' || c == '['))
            ++depth;
        else if (!inString && (c == '}' || c == ']'))
            --depth;
        if (depth > deepestRecord)
            return true;
    }
    return false;
}

} // namespace

Object::Object(const Json &value)
    : m_value(value)
{
    if (!value.is_object())
        throw Error{DecodeError::Kind::TypeMismatch, QStringLiteral("Expected an object.")};
}

bool Object::has(const char *key) const
{
    const auto found = m_value.find(key);
    return found != m_value.end() && !found->is_null();
}

const Json &Object::field(const char *key) const
{
    const auto found = m_value.find(key);
    if (found == m_value.end())
        throw Error{DecodeError::Kind::KeyNotFound,
                    QStringLiteral("No value for \"%1\".").arg(QLatin1String(key))};
    return *found;
}

QString Object::string(const char *key) const
{
    return toText(field(key), key);
}

QUuid Object::uuid(const char *key) const
{
    const std::optional<QUuid> id = uuidFromString(string(key));
    if (!id)
        throw Error{DecodeError::Kind::DataCorrupted,
                    QStringLiteral("The value of \"%1\" is no UUID.").arg(QLatin1String(key))};
    return *id;
}

QStringList Object::stringArray(const char *key) const
{
    const Json &value = field(key);
    if (!value.is_array())
        throw mismatch(key);
    QStringList strings;
    for (const Json &element : value)
        strings.append(toText(element, key));
    return strings;
}

bool Object::boolean(const char *key) const
{
    const Json &value = field(key);
    if (!value.is_boolean())
        throw mismatch(key);
    return value.get<bool>();
}

double Object::number(const char *key) const
{
    const Json &value = field(key);
    if (!value.is_number())
        throw mismatch(key);
    return value.get<double>();
}

std::int64_t Object::integer(const char *key) const
{
    const Json &value = field(key);
    if (value.is_number_integer() && (!value.is_number_unsigned() || value.get<std::uint64_t>() <= INT64_MAX))
        return value.get<std::int64_t>();
    // A fraction of zero is an integer written long.
    const double real = number(key);
    if (!(std::abs(real) < 9007199254740992.0) || real != std::trunc(real))
        throw mismatch(key);
    return static_cast<std::int64_t>(real);
}

std::string text(const QString &string)
{
    return string.toStdString();
}

Json number(double value)
{
    if (std::abs(value) < 9007199254740992.0 && value == std::trunc(value))
        return static_cast<std::int64_t>(value);
    return value;
}

QByteArray dump(const Json &value)
{
    return QByteArray::fromStdString(value.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json parse(const QByteArray &text)
{
    // Looked at beforehand: the parser's own callbacks take time by the square of the list.
    Json value = isTooDeep(text) ? Json(Json::value_t::discarded)
                                 : Json::parse(text.cbegin(), text.cend(), nullptr, false);
    if (value.is_discarded())
        throw Error{DecodeError::Kind::NotJson, QStringLiteral("The given data was not valid JSON.")};
    return value;
}

} // namespace quillbay::json
