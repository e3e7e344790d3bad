#pragma once

#include "elevate/Entry.h"
#include "elevate/FileMark.h"
#include "elevate/Outcome.h"

#include <string>

namespace quillbay::elevate {

/// Copies `from`, provided that it is `expected`, with everything in it to the new name `name` in the folder
/// `target`, and has it written to the disk. Links are copied as links, another mount is not entered, owners,
/// modes, times and extended attributes (where the target has such) stay. Several links to one file become
/// files. Device nodes are refused, and so are trees of more than 200 folders in each other.
///
/// After a failure a part of the copy is left: the caller removes it.
Outcome copyTree(const Entry &from, const FileMark &expected, int target, const std::string &name);

} // namespace quillbay::elevate
