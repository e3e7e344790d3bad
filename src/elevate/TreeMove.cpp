#include "elevate/TreeMove.h"

#include "elevate/TreeCopy.h"
#include "elevate/TreeRemoval.h"

#include <cerrno>
#include <cinttypes>
#include <cstdio>

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

namespace quillbay::elevate {

namespace {

// Without renameat2's flag: what is at the new name still cannot be overwritten, since a link is not made
// over a file and a folder replaces an empty folder at most, which is the one made here.
int renamePlainly(const Entry &from, const Entry &to, bool isFolder)
{
    const int source = from.folder.get();
    const int target = to.folder.get();
    if (isFolder) {
        if (mkdirat(target, to.name.c_str(), S_IRWXU) != 0)
            return errno;
        if (renameat(source, from.name.c_str(), target, to.name.c_str()) == 0)
            return 0;
        const int error = errno;
        return unlinkat(target, to.name.c_str(), AT_REMOVEDIR) == 0 ? error : errno;
    }
    if (linkat(source, from.name.c_str(), target, to.name.c_str(), 0) != 0)
        return errno;
    if (unlinkat(source, from.name.c_str(), 0) == 0)
        return 0;
    const int error = errno;
    return unlinkat(target, to.name.c_str(), 0) == 0 ? error : errno;
}

int renameFreshly(const Entry &from, const Entry &to, bool isFolder)
{
    if (renameat2(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str(), RENAME_NOREPLACE) ==
        0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    return renamePlainly(from, to, isFolder);
}

Outcome renameOutcome(int error)
{
    switch (error) {
    case 0:
        return {};
    case EEXIST:
    case ENOTEMPTY:
        return {Status::Occupied, error};
    case EBUSY:
        return {Status::Mounted, error};
    default:
        return Outcome::failed(error);
    }
}

Outcome copyAndRemove(const Entry &from, const Entry &to, const FileMark &expected)
{
    // Whatever cannot be removed afterwards need not be copied.
    if (faccessat(from.folder.get(), ".", W_OK | X_OK, AT_EACCESS) != 0)
        return Outcome::failed(errno);
    std::uint64_t random = 0;
    if (getrandom(&random, sizeof random, 0) != ssize_t(sizeof random))
        return Outcome::failed(errno);
    char name[40];
    std::snprintf(name, sizeof name, ".quillbay-%016" PRIx64, random);
    const Descriptor folder(fcntl(to.folder.get(), F_DUPFD_CLOEXEC, 0));
    if (!folder)
        return Outcome::failed(errno);

    const Outcome copied = copyTree(from, expected, to.folder.get(), name);
    Outcome named = copied;
    if (copied.done()) {
        const Entry whole{Descriptor(fcntl(to.folder.get(), F_DUPFD_CLOEXEC, 0)), name};
        named = renameOutcome(renameFreshly(whole, to, S_ISDIR(expected.kind)));
    }
    if (named.done())
        return removeTree(from, expected);
    const Entry rest{Descriptor(fcntl(to.folder.get(), F_DUPFD_CLOEXEC, 0)), name};
    if (const auto mark = markAt(rest.folder.get(), rest.name)) {
        const Outcome cleared = removeTree(rest, *mark);
        if (!cleared.done())
            return cleared;
    }
    return named;
}

} // namespace

Outcome moveTree(const Entry &from, const Entry &to, const FileMark &expected)
{
    const auto mark = markAt(from.folder.get(), from.name);
    if (!mark)
        return errno == ENOENT ? Outcome{Status::Missing, errno} : Outcome::failed(errno);
    if (*mark != expected)
        return {Status::Changed, 0};
    const Descriptor source(openat(from.folder.get(), from.name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    const auto mount = source ? mountOf(source.get()) : std::nullopt;
    const auto folderMount = mountOf(from.folder.get());
    if (!mount || !folderMount)
        return Outcome::failed(errno);
    if (*mount != *folderMount)
        return {Status::Mounted, 0};
    if (markAt(to.folder.get(), to.name))
        return {Status::Occupied, EEXIST};

    const bool isFolder = S_ISDIR(expected.kind);
    const int error = renameFreshly(from, to, isFolder);
    if (error == EXDEV)
        return copyAndRemove(from, to, expected);
    if (error != 0)
        return renameOutcome(error);
    if (markAt(to.folder.get(), to.name) == expected)
        return {};
    // Swapped in the moment between: back with it.
    const int undone = renameFreshly(to, from, isFolder);
    return undone == 0 ? Outcome{Status::Changed, 0} : Outcome::failed(undone);
}

} // namespace quillbay::elevate
