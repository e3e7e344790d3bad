#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace quillbay {

/// Why stored JSON did not become a record.
struct DecodeError
{
    enum class Kind { NotJson, TypeMismatch, KeyNotFound, DataCorrupted };
    Kind kind = Kind::DataCorrupted;
    QString debugDescription;
};

/// A decoded value, or why there is none.
template <typename Value>
using Decoded = std::variant<Value, DecodeError>;

template <typename Value>
const Value *decodedValue(const Decoded<Value> &decoded)
{
    return std::get_if<Value>(&decoded);
}

} // namespace quillbay
