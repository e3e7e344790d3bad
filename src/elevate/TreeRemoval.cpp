#include "elevate/TreeRemoval.h"

#include "elevate/FolderListing.h"

#include <cerrno>
#include <utility>
#include <vector>

#include <fcntl.h>

namespace quillbay::elevate {

namespace {

Outcome failure(int error)
{
    return error == EBUSY ? Outcome{Status::Mounted, error} : Outcome::failed(error);
}

// A folder on the way down.
struct Level
{
    std::string name; // In the folder above; empty for the first.
    FileMark mark;
    std::vector<std::string> names; // Still to be removed.
};

// Empties a folder. Going up again it opens `..` and looks whether that is the folder it came from, so that
// two descriptors serve for any depth.
class Emptying
{
public:
    Emptying(Descriptor folder, std::uint64_t mount)
        : m_folder(std::move(folder))
        , m_mount(mount)
    {
    }

    Outcome run()
    {
        Outcome outcome = enter({});
        while (outcome.done() && !m_levels.empty()) {
            std::vector<std::string> &names = m_levels.back().names;
            if (names.empty()) {
                outcome = leave();
                continue;
            }
            const std::string name = std::move(names.back());
            names.pop_back();
            outcome = remove(name);
        }
        return outcome;
    }

private:
    // The folder that is now open.
    Outcome enter(const std::string &name)
    {
        const auto mark = markOf(m_folder.get());
        const auto mount = mountOf(m_folder.get());
        if (!mark || !mount)
            return Outcome::failed(errno);
        const std::uint64_t device = m_levels.empty() ? mark->device : m_levels.front().mark.device;
        if (*mount != m_mount || mark->device != device)
            return {Status::Mounted, 0};
        auto names = namesIn(m_folder.get());
        if (!names)
            return Outcome::failed(errno);
        m_levels.push_back({name, *mark, std::move(*names)});
        return {};
    }

    Outcome leave()
    {
        const Level emptied = std::move(m_levels.back());
        m_levels.pop_back();
        if (m_levels.empty())
            return {};
        Descriptor above(openat(m_folder.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!above)
            return Outcome::failed(errno);
        const auto mount = mountOf(above.get());
        if (markOf(above.get()) != m_levels.back().mark || mount != m_mount)
            return {Status::Changed, 0};
        if (markAt(above.get(), emptied.name) != emptied.mark)
            return {Status::Changed, 0};
        m_folder = std::move(above);
        if (unlinkat(m_folder.get(), emptied.name.c_str(), AT_REMOVEDIR) != 0)
            return failure(errno);
        return {};
    }

    Outcome remove(const std::string &name)
    {
        if (unlinkat(m_folder.get(), name.c_str(), 0) == 0 || errno == ENOENT)
            return {};
        const int error = errno;
        // What a folder answers; the second by POSIX, which others give for files as well.
        if (error != EISDIR && error != EPERM)
            return failure(error);
        Descriptor folder(
            openat(m_folder.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder && errno == ENOENT)
            return {};
        if (!folder)
            return failure(errno == ENOTDIR || errno == ELOOP ? error : errno);
        m_folder = std::move(folder);
        return enter(name);
    }

    Descriptor m_folder;
    std::uint64_t m_mount;
    std::vector<Level> m_levels;
};

Outcome emptyFolder(const Entry &entry, const FileMark &expected)
{
    Descriptor folder(
        openat(entry.folder.get(), entry.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return errno == ENOTDIR || errno == ELOOP ? Outcome{Status::Changed, errno} : failure(errno);
    if (markOf(folder.get()) != expected)
        return {Status::Changed, 0};
    const auto mount = mountOf(entry.folder.get());
    return mount ? Emptying(std::move(folder), *mount).run() : Outcome::failed(errno);
}

} // namespace

Outcome removeTree(const Entry &entry, const FileMark &expected)
{
    const auto mark = markAt(entry.folder.get(), entry.name);
    if (!mark)
        return errno == ENOENT ? Outcome{Status::Missing, errno} : Outcome::failed(errno);
    if (*mark != expected)
        return {Status::Changed, 0};
    const bool isFolder = S_ISDIR(expected.kind);
    if (isFolder) {
        const Outcome emptied = emptyFolder(entry, expected);
        if (!emptied.done())
            return emptied;
        if (markAt(entry.folder.get(), entry.name) != expected)
            return {Status::Changed, 0};
    }
    if (unlinkat(entry.folder.get(), entry.name.c_str(), isFolder ? AT_REMOVEDIR : 0) != 0)
        return failure(errno);
    return {};
}

} // namespace quillbay::elevate
