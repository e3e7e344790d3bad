#pragma once

#include <QByteArray>

#include <optional>

namespace quillbay {

/// Which file a path leads to at one moment, links not followed. A path that leads to another one later was
/// renamed over, replaced or swapped for a link in between.
///
/// Paths are the file system's own bytes, as `lstat` takes them: names that are no valid UTF-8 exist, and a
/// QString would not lead back to them. Thread-safe.
struct FileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;
    quint32 kind = 0; ///< The S_IFMT bits of its mode.

    bool operator==(const FileIdentity &) const = default;

    /// Nothing where there is no file, or none that may be looked at.
    static std::optional<FileIdentity> of(const QByteArray &path);
};

} // namespace quillbay
