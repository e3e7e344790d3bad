#include "uninstaller/DirectorySize.h"

#include "foundation/ByteCount.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr size_t MostOpen = 64;

struct Close
{
    void operator()(DIR *stream) const { ::closedir(stream); }
};
using Stream = std::unique_ptr<DIR, Close>;

Stream openFolder(int parent, const char *name)
{
    const int descriptor = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    Stream stream(::fdopendir(descriptor));
    if (!stream)
        ::close(descriptor); // only read from
    return stream;
}

qint64 sizeOf(const struct stat &status)
{
    return S_ISREG(status.st_mode) || S_ISLNK(status.st_mode) ? status.st_size : 0;
}

/// A folder on the way down from the top: its files are counted, some of its subfolders are still to come.
struct Level
{
    Stream stream; ///< Null while too many others are open.
    dev_t device = 0;
    ino_t inode = 0;
    std::vector<std::string> pending;
};

class TreeSize
{
public:
    explicit TreeSize(const std::atomic_bool *stopped)
        : m_stopped(stopped)
    {
    }

    qint64 of(const QByteArray &path)
    {
        enter(openFolder(AT_FDCWD, path.constData()));
        while (!m_levels.empty() && !(m_stopped && m_stopped->load(std::memory_order_relaxed))) {
            if (m_levels.back().pending.empty()) {
                leave();
                continue;
            }
            const std::string name = std::move(m_levels.back().pending.back());
            m_levels.back().pending.pop_back();
            enter(openFolder(::dirfd(m_levels.back().stream.get()), name.c_str()));
        }
        return m_size;
    }

private:
    void enter(Stream stream)
    {
        if (!stream)
            return;
        if (m_levels.size() >= MostOpen)
            closeForNow(m_levels[m_levels.size() - MostOpen]);
        Level level;
        level.stream = std::move(stream);
        const int folder = ::dirfd(level.stream.get());
        while (const dirent *entry = ::readdir(level.stream.get())) {
            if (entry->d_name[0] == '.')
                continue;
            struct stat status = {};
            bool isFolder = entry->d_type == DT_DIR;
            if (!isFolder && ::fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
                isFolder = S_ISDIR(status.st_mode);
            if (isFolder)
                level.pending.emplace_back(entry->d_name);
            else
                m_size = addByteCounts(m_size, sizeOf(status));
        }
        // Nothing needs the way back to a folder that has no subfolders left.
        if (!level.pending.empty())
            m_levels.push_back(std::move(level));
    }

    void leave()
    {
        const Level left = std::move(m_levels.back());
        m_levels.pop_back();
        if (m_levels.empty() || m_levels.back().stream)
            return;
        // Up again, unless someone moved the folder meanwhile: then it leads out of the tree.
        Level &parent = m_levels.back();
        parent.stream = openFolder(::dirfd(left.stream.get()), "..");
        struct stat status = {};
        if (!parent.stream || ::fstat(::dirfd(parent.stream.get()), &status) != 0 ||
            status.st_dev != parent.device || status.st_ino != parent.inode)
            m_levels.clear();
    }

    static void closeForNow(Level &level)
    {
        struct stat status = {};
        if (!level.stream || ::fstat(::dirfd(level.stream.get()), &status) != 0)
            return;
        level.device = status.st_dev;
        level.inode = status.st_ino;
        level.stream.reset();
    }

    const std::atomic_bool *m_stopped;
    std::vector<Level> m_levels;
    qint64 m_size = 0;
};

} // namespace

qint64 fileSize(const QByteArray &path)
{
    struct stat status = {};
    return !path.contains('\0') && ::lstat(path.constData(), &status) == 0 ? sizeOf(status) : 0;
}

qint64 directorySize(const QByteArray &path, const std::atomic_bool *stopped)
{
    struct stat status = {};
    if (path.contains('\0') || ::lstat(path.constData(), &status) != 0)
        return 0;
    return S_ISDIR(status.st_mode) ? TreeSize(stopped).of(path) : sizeOf(status);
}

} // namespace quillbay
