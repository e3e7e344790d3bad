#pragma once

#include "uninstaller/FileIdentity.h"

#include <QByteArray>
#include <QList>

namespace quillbay {

/// Refuses folders that no removal may take, whoever chose them: each given one and everything above it,
/// under whatever name they are reached (a link to one stays removable, unless it is the way to the folder).
/// It compares files, not names.
///
/// Reads the folders once, when it is made. Thread-safe afterwards.
class RemovalGuard
{
public:
    explicit RemovalGuard(const QList<QByteArray> &folders);

    /// The home folder, the base folders of the XDG specification, the Trash and the folders that all
    /// programs share in them.
    static RemovalGuard ofSession();

    /// Also true for what is no absolute path, has an empty, `.` or `..` step, or cannot be looked at.
    bool refuses(const QByteArray &path) const;

private:
    QList<FileIdentity> m_files;
};

} // namespace quillbay
