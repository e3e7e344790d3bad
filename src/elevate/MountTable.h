#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay::elevate {

/// The mount points in a text of the form of /proc/self/mountinfo (proc(5)): the fifth field of each line,
/// with blanks, line ends and backslashes in it written as `\ooo`.
std::vector<std::string> parseMountPoints(std::string_view mountInfo);

/// Where this process has something mounted. Nothing where the system does not tell.
std::optional<std::vector<std::string>> mountPoints();

/// Whether `path`, free of links, is `folder` or lies above it.
bool isAtOrAbove(std::string_view path, std::string_view folder);

/// Whether `path`, free of links, is a mount point or has one below it; true as well where that cannot be
/// told.
bool holdsMount(const std::string &path);

} // namespace quillbay::elevate
