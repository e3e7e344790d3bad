#pragma once

#include "platform/linux/icons/IconTheme.h"

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace quillbay::platform {

/// The pictures in a set of folders, by name: each folder is listed once and remembered in sixteen bytes a
/// file.
///
/// Only the hash of a name is kept. Two names of one hash cost a look for a file that is not there, never a
/// wrong picture, since paths are made from the name that was asked for.
///
/// Thread: used by one at a time.
class IconListing
{
public:
    /// Lists `path` and files its PNG, SVG and XPM files under `kind`. A folder that does not exist is
    /// watched for, too. To be called before the first `find`.
    void add(const QByteArray &path, const IconThemeFolder &kind);

    /// Watches `path` without listing it: one that comes, goes or changes makes the listing stale. Returns
    /// whether it is a folder.
    bool watch(const QByteArray &path);

    /// Files named exactly `name` plus extension, best for `edge` pixels first.
    QStringList find(const QByteArray &name, int edge);

    /// Whether a folder came, went or changed since it was listed. One `stat` for each.
    bool isStale() const;

private:
    struct File
    {
        size_t hash;
        quint32 folder;
        quint8 extension;
    };
    struct Folder
    {
        QByteArray path;
        IconThemeFolder kind;
    };
    struct Stamp
    {
        QByteArray path;
        ino_t inode;
        qint64 modified;
    };

    using Identity = std::pair<dev_t, ino_t>;

    /// Remembers what `path` is like now; nothing if it is no folder.
    std::optional<Identity> stamp(const QByteArray &path);

    std::vector<File> m_files;
    std::vector<Folder> m_folders;
    std::vector<Stamp> m_stamps;
    std::set<Identity> m_listed;
    bool m_sorted = true;
};

} // namespace quillbay::platform
