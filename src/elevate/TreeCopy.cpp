#include "elevate/TreeCopy.h"

#include "elevate/FolderListing.h"

#include <array>
#include <cerrno>
#include <climits>
#include <vector>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quillbay::elevate {

namespace {

constexpr int deepest = 200;
constexpr std::size_t blockSize = 128 * 1024;

Outcome lastError()
{
    return Outcome::failed(errno);
}

bool writeAll(int descriptor, const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(descriptor, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        data += written;
        size -= std::size_t(written);
    }
    return true;
}

Outcome copyContent(int from, int to)
{
    std::vector<char> block(blockSize);
    for (;;) {
        const ssize_t count = read(from, block.data(), block.size());
        if (count == 0)
            return {};
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !writeAll(to, block.data(), std::size_t(count)))
            return lastError();
    }
}

Outcome copyAttributes(int from, int to)
{
    std::vector<char> names(XATTR_LIST_MAX);
    std::vector<char> value(XATTR_SIZE_MAX);
    const ssize_t size = flistxattr(from, names.data(), names.size());
    if (size < 0)
        return errno == ENOTSUP ? Outcome() : lastError();
    for (const char *name = names.data(); name < names.data() + size;) {
        const ssize_t length = fgetxattr(from, name, value.data(), value.size());
        if (length < 0)
            return lastError();
        if (fsetxattr(to, name, value.data(), std::size_t(length), 0) != 0 && errno != ENOTSUP)
            return lastError();
        name += std::char_traits<char>::length(name) + 1;
    }
    return {};
}

// The mode comes after the owner, whose change takes bits of it.
Outcome copyStatus(int from, int to, const struct stat &status)
{
    if (fchown(to, status.st_uid, status.st_gid) != 0)
        return lastError();
    const Outcome attributes = copyAttributes(from, to);
    if (!attributes.done())
        return attributes;
    const std::array<timespec, 2> times = {status.st_atim, status.st_mtim};
    if (fchmod(to, status.st_mode & ~mode_t(S_IFMT)) != 0 || futimens(to, times.data()) != 0)
        return lastError();
    return {};
}

Outcome copyStatusAt(int folder, const std::string &name, const struct stat &status)
{
    const std::array<timespec, 2> times = {status.st_atim, status.st_mtim};
    if (fchownat(folder, name.c_str(), status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW) != 0 ||
        utimensat(folder, name.c_str(), times.data(), AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    return {};
}

Outcome copyLink(int from, const std::string &name, int to, const std::string &newName,
                 const struct stat &status)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlinkat(from, name.c_str(), target.data(), target.size() - 1);
    if (length < 0 || symlinkat(target.data(), to, newName.c_str()) != 0)
        return lastError();
    return copyStatusAt(to, newName, status);
}

Outcome copyPipe(int to, const std::string &newName, const struct stat &status)
{
    if (mknodat(to, newName.c_str(), (status.st_mode & S_IFMT) | S_IRUSR | S_IWUSR, 0) != 0)
        return lastError();
    const Outcome copied = copyStatusAt(to, newName, status);
    if (!copied.done())
        return copied;
    return fchmodat(to, newName.c_str(), status.st_mode & ~mode_t(S_IFMT), 0) == 0 ? Outcome() : lastError();
}

struct Source
{
    int folder;
    std::string name;
    std::uint64_t mount;
};

Outcome copyAny(const Source &from, const FileMark *expected, int to, const std::string &newName, int depth);

Outcome copyFolder(int source, std::uint64_t mount, int to, const std::string &newName,
                   const struct stat &status, int depth)
{
    if (depth >= deepest)
        return Outcome::failed(ENAMETOOLONG);
    const auto names = namesIn(source);
    if (!names || mkdirat(to, newName.c_str(), S_IRWXU) != 0)
        return lastError();
    const Descriptor copy(openat(to, newName.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!copy)
        return lastError();
    for (const std::string &name : *names) {
        const Outcome copied = copyAny({source, name, mount}, nullptr, copy.get(), name, depth + 1);
        if (!copied.done())
            return copied;
    }
    return copyStatus(source, copy.get(), status);
}

Outcome copyFile(int source, int to, const std::string &newName, const struct stat &status)
{
    const Descriptor copy(
        openat(to, newName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!copy)
        return lastError();
    const Outcome copied = copyContent(source, copy.get());
    return copied.done() ? copyStatus(source, copy.get(), status) : copied;
}

Outcome copyAny(const Source &from, const FileMark *expected, int to, const std::string &newName, int depth)
{
    struct stat status = {};
    if (fstatat(from.folder, from.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    const FileMark mark = markOf(status);
    if (expected && mark != *expected)
        return {Status::Changed, 0};
    if (S_ISLNK(status.st_mode))
        return copyLink(from.folder, from.name, to, newName, status);
    if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))
        return copyPipe(to, newName, status);
    if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
        return Outcome::failed(ENOTSUP);

    const Descriptor source(
        openat(from.folder, from.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!source)
        return lastError();
    if (markOf(source.get()) != mark)
        return {Status::Changed, 0};
    const auto mount = mountOf(source.get());
    if (!mount)
        return lastError();
    if (*mount != from.mount)
        return {Status::Mounted, 0};
    return S_ISDIR(status.st_mode) ? copyFolder(source.get(), from.mount, to, newName, status, depth)
                                   : copyFile(source.get(), to, newName, status);
}

} // namespace

Outcome copyTree(const Entry &from, const FileMark &expected, int target, const std::string &name)
{
    const auto mount = mountOf(from.folder.get());
    if (!mount)
        return lastError();
    const Outcome copied = copyAny({from.folder.get(), from.name, *mount}, &expected, target, name, 0);
    if (!copied.done())
        return copied;
    const Descriptor folder(openat(target, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder && syncfs(folder.get()) == 0 ? Outcome() : lastError();
}

} // namespace quillbay::elevate
