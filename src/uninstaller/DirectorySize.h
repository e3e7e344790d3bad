#pragma once

#include <QByteArray>

#include <atomic>

namespace quillbay {

/// The logical size of the file at the path, links not followed: that of a regular file or of the link's own
/// text. 0 for a folder, for anything else and where it cannot be asked. Thread-safe.
qint64 fileSize(const QByteArray &path);

/// The logical size of what the path leads to: that of a file or link as above, of a folder the sum over all
/// files and links below it. Folders themselves count nothing, nor does any entry whose name begins with a
/// dot, nor what lies below it; a file of two names counts twice. What cannot be read adds nothing.
///
/// Follows no link, so it never leaves the tree; takes trees of any depth with a bounded number of open
/// folders. Once `stopped` becomes true it ends soon, with less than the whole. Thread-safe; belongs on a
/// worker.
qint64 directorySize(const QByteArray &path, const std::atomic_bool *stopped = nullptr);

} // namespace quillbay
