#include "platform/linux/uninstalling/removal/TrashFolder.h"

#include "elevate/Descriptor.h"
#include "elevate/FileMark.h"
#include "elevate/FolderListing.h"
#include "platform/linux/uninstalling/removal/TrashInfo.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

constexpr qint64 largestInfo = 64 * 1024;

std::optional<TrashInfo> readInfo(const QByteArray &path)
{
    elevate::Descriptor descriptor(open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    QFile file;
    if (!descriptor || !file.open(descriptor.get(), QIODevice::ReadOnly))
        return std::nullopt;
    return parseTrashInfo(file.read(largestInfo));
}

} // namespace

TrashedFile TrashFolder::place(const QByteArray &name) const
{
    return {filesFolder() + '/' + name, infoFolder() + '/' + name + ".trashinfo"};
}

std::optional<TrashedFile> TrashFolder::find(const QByteArray &origin, const FileStamp &file) const
{
    const elevate::Descriptor folder(open(filesFolder().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto names = folder ? elevate::namesIn(folder.get()) : std::nullopt;
    if (!names)
        return std::nullopt;
    for (const std::string &name : *names) {
        const auto mark = elevate::markAt(folder.get(), name);
        if (!mark || mark->inode != file.inode || mark->kind != file.kind)
            continue;
        const TrashedFile candidate = place(QByteArray::fromStdString(name));
        const auto info = readInfo(candidate.info);
        if (!info)
            continue;
        const QByteArray from = info->path.startsWith('/') ? info->path : top + '/' + info->path;
        if (from == origin)
            return candidate;
    }
    return std::nullopt;
}

TrashFolder ownTrash()
{
    const QByteArray set = qgetenv("XDG_DATA_HOME");
    const QByteArray data = set.startsWith('/') ? set : QFile::encodeName(QDir::homePath()) + "/.local/share";
    return {data + "/Trash", {}};
}

QList<TrashFolder> trashFoldersAbove(const QByteArray &folder)
{
    const QByteArray user = QByteArray::number(getuid());
    QList<TrashFolder> result;
    for (QByteArray top = folder == "/" ? QByteArray() : folder;; top.truncate(top.lastIndexOf('/'))) {
        result.append({top + "/.Trash/" + user, top});
        result.append({top + "/.Trash-" + user, top});
        if (top.isEmpty())
            return result;
    }
}

} // namespace quillbay::platform
