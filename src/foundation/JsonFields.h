#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <cstdint>

#include <nlohmann/json.hpp>

/// Reading and writing the records' JSON: typed field access over the JSON library, for implementation files
/// only (the library is a heavy header). A field of the wrong type or a missing one throws `Error`, which
/// `decode` turns into a value; it leaves no other way out.
namespace quillbay::json {

using Json = nlohmann::ordered_json;

struct Error
{
    DecodeError::Kind kind;
    QString description;
};

/// One JSON object under decoding.
class Object
{
public:
    /// Throws a type mismatch unless `value` is an object. The value must outlive this.
    explicit Object(const Json &value);

    /// Whether the key is there with a value other than null.
    bool has(const char *key) const;
    QString string(const char *key) const;
    QUuid uuid(const char *key) const;
    QStringList stringArray(const char *key) const;
    bool boolean(const char *key) const;
    double number(const char *key) const;
    /// A number without a fraction that 64 signed bits hold.
    std::int64_t integer(const char *key) const;

private:
    const Json &field(const char *key) const;

    const Json &m_value;
};

std::string text(const QString &string);
/// Written without a fraction where it has none.
Json number(double value);
/// Compact UTF-8; what is not valid Unicode is replaced, so that writing cannot fail.
QByteArray dump(const Json &value);
/// The parsed text; throws `Error` where it is not JSON or nests deeper than any record does.
Json parse(const QByteArray &text);

/// Parses, and hands the value to `read`; whatever goes wrong comes back as the error.
template <typename Value, typename Read>
Decoded<Value> decode(const QByteArray &text, Read read)
{
    try {
        return read(parse(text));
    } catch (const Error &error) {
        return DecodeError{error.kind, error.description};
    }
}

} // namespace quillbay::json
