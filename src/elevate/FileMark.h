#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace quillbay::elevate {

/// Which file is meant, links not followed: a name that leads to another mark later was renamed over,
/// replaced or swapped for a link.
struct FileMark
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint32_t kind = 0; ///< The S_IFMT bits of the mode.

    bool operator==(const FileMark &) const = default;
};

FileMark markOf(const struct stat &status);
/// Of what `name` is in the folder `folder`; nothing with `errno` set where there is none.
std::optional<FileMark> markAt(int folder, const std::string &name);
std::optional<FileMark> markOf(int descriptor);

/// "DEVICE:INODE:KIND" in decimal digits, nothing else accepted.
std::optional<FileMark> parseMark(std::string_view text);

/// The kernel's number of the mount that an open file lies on. It tells a bind mount of the same file system
/// apart, which the device number does not. Nothing with `errno` set where the kernel does not say.
std::optional<std::uint64_t> mountOf(int descriptor);

} // namespace quillbay::elevate
