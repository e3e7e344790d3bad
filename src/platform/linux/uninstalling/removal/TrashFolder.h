#pragma once

#include "platform/Trash.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace quillbay::platform {

/// One folder with `files` and `info` in it.
struct TrashFolder
{
    QByteArray path;
    QByteArray top; ///< What the paths in its records are relative to; empty for the user's own Trash.

    QByteArray filesFolder() const { return path + "/files"; }
    QByteArray infoFolder() const { return path + "/info"; }
    TrashedFile place(const QByteArray &name) const;

    /// What lies in it now, is `file`, and came from `origin` by its record.
    std::optional<TrashedFile> find(const QByteArray &origin, const FileStamp &file) const;
};

/// The user's own Trash: `$XDG_DATA_HOME/Trash`, where that is an absolute path, else in ~/.local/share.
TrashFolder ownTrash();

/// The Trash folders, there or not, of the file systems that `folder` (free of links) may lie on:
/// `.Trash/UID` and `.Trash-UID` in it and in all folders above.
QList<TrashFolder> trashFoldersAbove(const QByteArray &folder);

} // namespace quillbay::platform
