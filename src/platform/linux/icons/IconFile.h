#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillbay::platform {

/// Reads `count` bytes from `offset` of the regular file `path`, fewer where it ends earlier. Nothing for
/// whatever is not a regular file once links are followed (a FIFO or device is never waited for), cannot be
/// read, or is larger than `largest`. Thread: any.
std::optional<QByteArray> readIconFile(const QString &path, qint64 largest, qint64 offset, qint64 count);

/// The whole of it.
inline std::optional<QByteArray> readIconFile(const QString &path, qint64 largest)
{
    return readIconFile(path, largest, 0, largest);
}

} // namespace quillbay::platform
