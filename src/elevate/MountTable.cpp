#include "elevate/MountTable.h"

#include "elevate/Descriptor.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace quillbay::elevate {

namespace {

constexpr int mountPointField = 4;

bool isOctal(char byte)
{
    return byte >= '0' && byte <= '7';
}

std::string unescaped(std::string_view field)
{
    std::string result;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) && isOctal(field[i + 2]) &&
            isOctal(field[i + 3])) {
            result += char((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0'));
            i += 3;
        } else {
            result += field[i];
        }
    }
    return result;
}

} // namespace

std::vector<std::string> parseMountPoints(std::string_view mountInfo)
{
    std::vector<std::string> result;
    while (!mountInfo.empty()) {
        std::string_view line = mountInfo.substr(0, mountInfo.find('\n'));
        mountInfo.remove_prefix(std::min(mountInfo.size(), line.size() + 1));
        for (int field = 0; field < mountPointField; ++field)
            line.remove_prefix(std::min(line.size(), std::min(line.find(' '), line.size()) + 1));
        const std::string_view point = line.substr(0, line.find(' '));
        if (!point.empty())
            result.push_back(unescaped(point));
    }
    return result;
}

std::optional<std::vector<std::string>> mountPoints()
{
    const Descriptor file(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    if (!file)
        return std::nullopt;
    std::string text;
    char part[16 * 1024];
    for (;;) {
        const ssize_t count = read(file.get(), part, sizeof part);
        if (count == 0)
            break;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        text.append(part, std::size_t(count));
    }
    return parseMountPoints(text);
}

bool isAtOrAbove(std::string_view path, std::string_view folder)
{
    if (path == "/" || path == folder)
        return true;
    return folder.size() > path.size() && folder.substr(0, path.size()) == path && folder[path.size()] == '/';
}

bool holdsMount(const std::string &path)
{
    const auto points = mountPoints();
    return !points || std::any_of(points->begin(), points->end(),
                                  [&](const std::string &point) { return isAtOrAbove(path, point); });
}

} // namespace quillbay::elevate
