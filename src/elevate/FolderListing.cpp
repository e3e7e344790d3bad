#include "elevate/FolderListing.h"

#include "elevate/Descriptor.h"

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>

namespace quillbay::elevate {

std::optional<std::vector<std::string>> namesIn(int folder)
{
    Descriptor own(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!own)
        return std::nullopt;
    const auto closeStream = [](DIR *stream) { closedir(stream); };
    const std::unique_ptr<DIR, decltype(closeStream)> stream(fdopendir(own.get()), closeStream);
    if (!stream)
        return std::nullopt;
    own.release();

    std::vector<std::string> names;
    errno = 0;
    while (const dirent *entry = readdir(stream.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
    if (errno != 0)
        return std::nullopt;
    return names;
}

} // namespace quillbay::elevate
