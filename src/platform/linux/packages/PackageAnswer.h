#pragma once

#include <QString>

namespace quillbay::platform {

/// A value, or the reason why there is none, in words for the user.
template <typename Value>
struct PackageAnswer
{
    Value value = {};
    QString error; ///< Empty: `value` holds.

    explicit operator bool() const { return error.isEmpty(); }
};

template <typename Value>
PackageAnswer<Value> packageError(const QString &error)
{
    return {{}, error};
}

} // namespace quillbay::platform
