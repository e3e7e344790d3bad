#include "platform/linux/uninstalling/removal/XdgTrash.h"

#include "elevate/Descriptor.h"
#include "elevate/Entry.h"
#include "platform/linux/uninstalling/removal/TrashFolder.h"
#include "platform/linux/uninstalling/removal/TrashInfo.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <gio/gio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

FileResult failure(int error)
{
    using Outcome = FileResult::Outcome;
    Outcome outcome = Outcome::Failed;
    if (error == EEXIST)
        outcome = Outcome::Occupied;
    else if (error == EACCES || error == EPERM)
        outcome = Outcome::NotPermitted;
    return {outcome, QString::fromLocal8Bit(std::strerror(error))};
}

FileResult::Outcome outcomeOf(const GError &error)
{
    if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND))
        return FileResult::Outcome::Missing;
    if (g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED))
        return FileResult::Outcome::NotPermitted;
    return FileResult::Outcome::Failed;
}

bool makeFolder(const QByteArray &path)
{
    for (qsizetype end = path.indexOf('/', 1);; end = path.indexOf('/', end + 1)) {
        const QByteArray part = end < 0 ? path : path.left(end);
        if (mkdir(part.constData(), S_IRWXU) != 0 && errno != EEXIST)
            return false;
        if (end < 0)
            return true;
    }
}

bool isThere(const QByteArray &path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 || errno != ENOENT;
}

bool writeWhole(int descriptor, const QByteArray &text)
{
    const ssize_t written = write(descriptor, text.constData(), std::size_t(text.size()));
    if (written >= 0 && written != text.size())
        errno = ENOSPC;
    return written == text.size() && fsync(descriptor) == 0;
}

} // namespace

XdgTrash::XdgTrash(Clock now)
    : m_now(std::move(now))
{
}

FileResult XdgTrash::moveToTrash(const QByteArray &path) const
{
    const std::unique_ptr<GFile, decltype(&g_object_unref)> file(g_file_new_for_path(path.constData()),
                                                                 &g_object_unref);
    GError *raised = nullptr;
    if (g_file_trash(file.get(), nullptr, &raised))
        return {};
    const std::unique_ptr<GError, decltype(&g_error_free)> error(raised, &g_error_free);
    return {outcomeOf(*error), QString::fromUtf8(error->message)};
}

TrashReservation XdgTrash::reserve(const QByteArray &name, const QByteArray &origin) const
{
    const TrashFolder trash = ownTrash();
    if (!makeFolder(trash.filesFolder()) || !makeFolder(trash.infoFolder()))
        return {failure(errno), {}};
    const TrashedFile place = trash.place(name);
    if (isThere(place.file))
        return {failure(EEXIST), {}};
    const elevate::Descriptor info(open(
        place.info.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!info)
        return {failure(errno), {}};
    if (!writeWhole(info.get(), serialize({origin, m_now()}))) {
        const int error = errno;
        return {failure(unlink(place.info.constData()) == 0 ? error : errno), {}};
    }
    return {{}, place};
}

bool XdgTrash::release(const TrashedFile &place) const
{
    if (isThere(place.file))
        return true;
    return unlink(place.info.constData()) == 0 || errno == ENOENT;
}

std::optional<TrashedFile> XdgTrash::find(const QByteArray &origin, const FileStamp &file) const
{
    if (auto found = ownTrash().find(origin, file))
        return found;
    // Another file system's records may name the way to it without links.
    const QByteArray resolved = QByteArray::fromStdString(elevate::withoutLinks(origin.toStdString()));
    if (resolved.isEmpty())
        return std::nullopt;
    for (const TrashFolder &trash : trashFoldersAbove(resolved.left(resolved.lastIndexOf('/')))) {
        auto found = trash.find(resolved, file);
        if (!found && resolved != origin)
            found = trash.find(origin, file);
        if (found)
            return found;
    }
    return std::nullopt;
}

} // namespace quillbay::platform
