#include "elevate/FileMark.h"

#include <cerrno>
#include <charconv>
#include <limits>

#include <fcntl.h>

namespace quillbay::elevate {

namespace {

// Takes a number and the byte that must follow it (0: the end) off the front.
std::optional<std::uint64_t> takeNumber(std::string_view &text, char after)
{
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(std::size_t(end - text.data()));
    if (!after)
        return text.empty() ? std::optional(value) : std::nullopt;
    if (text.empty() || text.front() != after)
        return std::nullopt;
    text.remove_prefix(1);
    return value;
}

} // namespace

FileMark markOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino, std::uint32_t(status.st_mode & S_IFMT)};
}

std::optional<FileMark> markAt(int folder, const std::string &name)
{
    struct stat status = {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return markOf(status);
}

std::optional<FileMark> markOf(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return std::nullopt;
    return markOf(status);
}

std::optional<FileMark> parseMark(std::string_view text)
{
    const auto device = takeNumber(text, ':');
    const auto inode = device ? takeNumber(text, ':') : std::nullopt;
    const auto kind = inode ? takeNumber(text, 0) : std::nullopt;
    if (!kind || *kind > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return FileMark{*device, *inode, std::uint32_t(*kind)};
}

std::optional<std::uint64_t> mountOf(int descriptor)
{
    struct statx status = {};
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0)
        return std::nullopt;
    if (!(status.stx_mask & STATX_MNT_ID)) {
        errno = ENOSYS;
        return std::nullopt;
    }
    return status.stx_mnt_id;
}

} // namespace quillbay::elevate
