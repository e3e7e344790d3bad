#pragma once

#include "elevate/Descriptor.h"
#include "elevate/Outcome.h"

#include <string>

namespace quillbay::elevate {

/// A name in a folder that is held open: where the folder is moved to afterwards, or what its path leads to,
/// matters no more.
struct Entry
{
    Descriptor folder; ///< Opened as a path alone (O_PATH).
    std::string name;
};

struct OpenedEntry
{
    Outcome outcome;
    Entry entry;
};

/// Whether `path` is absolute, not "/", and free of zero bytes and of empty, `.` and `..` steps.
bool isPlainPath(const std::string &path);

/// Opens the folder of `path` step by step from the root. A link among the steps is not followed: Unsafe. The
/// last step is not looked at.
OpenedEntry openEntry(const std::string &path);

/// `path` with the links on the way to its folder resolved; its last step stays, link or not. Empty with
/// `errno` set where that folder cannot be found.
std::string withoutLinks(const std::string &path);

} // namespace quillbay::elevate
