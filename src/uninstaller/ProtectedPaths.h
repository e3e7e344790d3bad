#pragma once

#include "platform/ResidualRoots.h"

#include <QByteArray>
#include <QList>
#include <QSet>

#include <optional>
#include <utility>

namespace quillbay {

/// What is never removed and never listed for removal, whatever it is called: the root folder, the folders
/// that no single application owns (home, base folders), everywhere that a file system is mounted, and every
/// folder above one of these.
///
/// Made from the state of a moment: whoever removes makes a new one. Reads no mounted file system but those
/// of the shared folders. Thread-safe; belongs on a worker.
class ProtectedPaths
{
public:
    /// Paths as in `ResidualLayout::sharedFolders` and `ResidualRoots::mountPoints`. Where the mount points
    /// are not known, every folder is protected.
    ProtectedPaths(const QList<QByteArray> &sharedFolders,
                   const std::optional<QList<QByteArray>> &mountPoints);
    explicit ProtectedPaths(const platform::ResidualRoots &roots);

    /// Whether the path must not be removed. Recognised however it is spelled: with links in the way to it,
    /// and by the folder that it leads to. The path's last name is not followed: a link is only a link.
    ///
    /// True also for what is no plain path: relative, empty, with empty, "." or ".." parts, with a slash at
    /// its end or a zero byte in it, and where the folder above it cannot be looked at.
    bool contains(const QByteArray &path) const;

private:
    void addWithParents(const QByteArray &path);

    QSet<QByteArray> m_paths;
    QSet<std::pair<quint64, quint64>> m_folders; ///< Device and inode.
    bool m_mountsKnown;
};

} // namespace quillbay
