#include "uninstaller/ProtectedPaths.h"

#include "uninstaller/PlainPath.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

#include <sys/stat.h>

namespace quillbay {

namespace {

QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

std::pair<quint64, quint64> folderOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

} // namespace

ProtectedPaths::ProtectedPaths(const QList<QByteArray> &sharedFolders,
                               const std::optional<QList<QByteArray>> &mountPoints)
    : m_mountsKnown(mountPoints.has_value())
{
    for (const QByteArray &folder : sharedFolders) {
        addWithParents(folder);
        if (const QByteArray real = realPath(folder); real != folder)
            addWithParents(real);
    }
    addWithParents("/");
    for (const QByteArray &path : std::as_const(m_paths)) {
        struct stat status = {};
        if (::stat(path.constData(), &status) == 0)
            m_folders.insert(folderOf(status));
    }
    // Not asked themselves: one that does not answer would hold everything up.
    for (const QByteArray &point : mountPoints.value_or(QList<QByteArray>()))
        addWithParents(point);
}

ProtectedPaths::ProtectedPaths(const platform::ResidualRoots &roots)
    : ProtectedPaths(roots.layout().sharedFolders, roots.mountPoints())
{
}

void ProtectedPaths::addWithParents(const QByteArray &path)
{
    if (!path.startsWith('/'))
        return;
    for (QByteArray folder = path; folder.size() > 1; folder.truncate(folder.lastIndexOf('/')))
        m_paths.insert(folder);
    m_paths.insert("/");
}

bool ProtectedPaths::contains(const QByteArray &path) const
{
    if (!isPlainPath(path) || m_paths.contains(path))
        return true;
    const qsizetype slash = path.lastIndexOf('/');
    errno = 0;
    const QByteArray parent = slash == 0 ? QByteArray("/") : realPath(path.left(slash));
    if (parent.isEmpty())
        return errno != ENOENT && errno != ENOTDIR;
    if (m_paths.contains((parent == "/" ? QByteArray() : parent) + path.mid(slash)))
        return true;
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0)
        return errno != ENOENT && errno != ENOTDIR;
    return S_ISDIR(status.st_mode) && (!m_mountsKnown || m_folders.contains(folderOf(status)));
}

} // namespace quillbay
