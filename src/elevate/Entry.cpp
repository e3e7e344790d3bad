#include "elevate/Entry.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include <fcntl.h>

namespace quillbay::elevate {

bool isPlainPath(const std::string &path)
{
    if (path.size() < 2 || path.front() != '/' || path.find('\0') != std::string::npos)
        return false;
    for (std::size_t begin = 1; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string step = path.substr(begin, end - begin);
        if (step.empty() || step == "." || step == "..")
            return false;
        begin = end + 1;
    }
    return true;
}

OpenedEntry openEntry(const std::string &path)
{
    if (!isPlainPath(path))
        return {{Status::Unsafe, 0}, {}};
    Descriptor folder(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::size_t begin = 1;
    for (std::size_t end; folder && (end = path.find('/', begin)) != std::string::npos; begin = end + 1) {
        const std::string step = path.substr(begin, end - begin);
        folder =
            Descriptor(openat(folder.get(), step.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    }
    if (folder)
        return {{}, {std::move(folder), path.substr(begin)}};
    // A link where a folder should be reads as "no folder".
    if (errno == ENOTDIR || errno == ELOOP)
        return {{Status::Unsafe, errno}, {}};
    return {errno == ENOENT ? Outcome{Status::Missing, errno} : Outcome::failed(errno), {}};
}

std::string withoutLinks(const std::string &path)
{
    if (!isPlainPath(path)) {
        errno = EINVAL;
        return {};
    }
    const std::size_t slash = path.rfind('/');
    if (slash == 0)
        return path;
    const std::unique_ptr<char, decltype(&std::free)> folder(realpath(path.substr(0, slash).c_str(), nullptr),
                                                             &std::free);
    if (!folder)
        return {};
    const std::string resolved = folder.get();
    return (resolved == "/" ? std::string() : resolved) + path.substr(slash);
}

} // namespace quillbay::elevate
