#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace quillbay::platform {

/// The mount points of this process now; nothing if the kernel's list cannot be read. Thread: any. Asks no
/// file system.
std::optional<QList<QByteArray>> currentMountPoints();

} // namespace quillbay::platform
