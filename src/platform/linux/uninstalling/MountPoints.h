#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace quillbay::platform {

/// The mount points of a text in the format of `/proc/self/mountinfo` (proc(5)), with its octal escapes
/// undone; a line that is cut short gives none.
QList<QByteArray> mountPointsIn(const QByteArray &mountinfo);

/// Those of this process now; nothing if the kernel's list cannot be read. Thread: any. Asks no file system.
std::optional<QList<QByteArray>> currentMountPoints();

} // namespace quillbay::platform
