#pragma once

#include <QByteArray>
#include <QDateTime>

#include <optional>

namespace quillbay::platform {

/// The record of one file in the Trash, as the Trash specification 1.0 of freedesktop.org has it:
///
///     [Trash Info]
///     Path=/home/user/a%20file
///     DeletionDate=2024-05-01T12:00:00
struct TrashInfo
{
    QByteArray path; ///< Where it was, in the file system's own bytes. Relative to the top folder of another
                     ///< file system's Trash.
    QDateTime deleted; ///< Local time, whole seconds; invalid where it cannot be read.
};

QByteArray serialize(const TrashInfo &info);
/// Nothing where the group or the path is missing, or the path's escapes are broken. Of a key that comes
/// twice the first counts.
std::optional<TrashInfo> parseTrashInfo(const QByteArray &text);

} // namespace quillbay::platform
