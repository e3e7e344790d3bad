#pragma once

#include <QString>

namespace quillbay::platform {

/// A lock that one process per user holds: an advisory lock on a file, which the kernel takes back when the
/// process ends, however it ends. The file itself stays and means nothing. The descriptor is not inherited by
/// children.
class InstanceLock
{
public:
    enum class Outcome {
        Held,       ///< This process has it, until the object goes.
        Taken,      ///< Another process has it.
        Unavailable ///< No file can be locked there.
    };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

    /// Tries once, without waiting. `folder` must exist; the file is `name` in it, mode 0600. A symbolic link
    /// or anything else that is not a regular file of this user is refused.
    Outcome acquire(const QString &folder, const QString &name);

    /// XDG_RUNTIME_DIR, or without a usable one a folder of this user alone below the temporary folder, made
    /// here. Empty if there is neither.
    static QString privateFolder();

private:
    int m_descriptor = -1;
};

} // namespace quillbay::platform
