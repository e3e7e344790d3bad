#pragma once

#include <map>
#include <string>

namespace quillbay::testing {

/// Everything below a folder, byte by byte: path to kind, mode, owner, inode, modification time, content or
/// link target. How many names a file has is left out, and so is the time of its last reading.
using TreeSnapshot = std::map<std::string, std::string>;

/// Links are not followed, `folder` itself included.
TreeSnapshot snapshotOf(const std::string &folder);

/// The first difference, readable; empty where there is none.
std::string difference(const TreeSnapshot &before, const TreeSnapshot &after);

} // namespace quillbay::testing
