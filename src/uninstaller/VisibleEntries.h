#pragma once

#include <QByteArray>

#include <vector>

namespace quillbay {

struct FolderEntry
{
    QByteArray name; ///< The file system's own bytes.
    bool isFolder;   ///< Itself: a link to a folder is none.
};

/// The direct children of a folder in the order in which the file system lists them, without those whose name
/// begins with a dot. Nothing where the folder cannot be listed to its end. Links in the way to the folder,
/// and the folder's own, are followed. Thread-safe.
std::vector<FolderEntry> visibleEntries(const QByteArray &folder);

} // namespace quillbay
