#pragma once

#include "platform/FileStamp.h"

#include <QByteArray>

namespace quillbay::platform {

/// Removing and moving files for good, as the user who runs the program.
///
/// Paths are absolute, in the file system's own bytes. Links on the way to a file's folder are followed; the
/// file itself, if it is a link, is not, and neither are links in it. Thread: any but the main one; blocks
/// for as long as it takes.
class FileRemoval
{
public:
    virtual ~FileRemoval() = default;

    /// `path` with the links on the way to its folder resolved; its last step stays. Empty where that folder
    /// cannot be found, and for what is no absolute path or has `.` or `..` in it.
    virtual QByteArray resolved(const QByteArray &path) const = 0;

    /// Whether the resolved `path` is a mount point or has one below it; true where that cannot be told.
    virtual bool holdsMount(const QByteArray &path) const = 0;

    /// Removes the file, or the folder with everything in it. Stops at the first thing that cannot be removed
    /// and leaves the rest as it is. Never enters another mount.
    virtual FileResult remove(const QByteArray &path, const FileStamp &expected) const = 0;

    /// Moves it to a new path, whose folder must be there; never overwrites. Across file systems it copies
    /// first and removes last.
    virtual FileResult move(const QByteArray &from, const QByteArray &to,
                            const FileStamp &expected) const = 0;
};

} // namespace quillbay::platform
