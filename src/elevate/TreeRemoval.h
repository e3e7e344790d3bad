#pragma once

#include "elevate/Entry.h"
#include "elevate/FileMark.h"
#include "elevate/Outcome.h"

namespace quillbay::elevate {

/// Removes `entry` with everything in it, for good, provided that it is still `expected`.
///
/// Goes by folder handles alone: a link is removed and never followed, another mount is never entered (a
/// mount anywhere in the tree ends the removal with Mounted), and a folder that is moved away meanwhile ends
/// it with Changed. Of a file with several hard links one name goes. At the first failure the rest is left as
/// it is: what is gone is gone, everything else is untouched.
///
/// Holds a constant number of descriptors, however deep the tree, and the names of the folders on the way.
/// Blocks. Any thread.
Outcome removeTree(const Entry &entry, const FileMark &expected);

} // namespace quillbay::elevate
