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

/// A failure stays one where nobody gave a reason for it.
template <typename Value>
PackageAnswer<Value> packageError(const QString &error)
{
    return {{}, error.isEmpty() ? QStringLiteral("the package manager gave no reason") : error};
}

} // namespace quillbay::platform
