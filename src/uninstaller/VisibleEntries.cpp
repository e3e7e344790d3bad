#include "uninstaller/VisibleEntries.h"

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillbay {

namespace {

struct Close
{
    void operator()(DIR *stream) const { ::closedir(stream); }
};

bool isFolder(int parent, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status = {};
    return ::fstatat(parent, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::vector<FolderEntry> visibleEntries(const QByteArray &folder)
{
    const std::unique_ptr<DIR, Close> stream(::opendir(folder.constData()));
    std::vector<FolderEntry> entries;
    if (!stream)
        return entries;
    errno = 0;
    while (const dirent *entry = ::readdir(stream.get())) {
        if (entry->d_name[0] != '.')
            entries.push_back({entry->d_name, isFolder(::dirfd(stream.get()), *entry)});
        errno = 0;
    }
    if (errno != 0)
        entries.clear();
    return entries;
}

} // namespace quillbay
