#pragma once

#include "elevate/Entry.h"
#include "elevate/FileMark.h"
#include "elevate/Outcome.h"

namespace quillbay::elevate {

/// Moves `from`, provided that it is still `expected`, to the name `to`, where nothing may be: what is there
/// is never overwritten (Occupied). Links are moved, not followed; a mount point is not moved.
///
/// Between file systems it copies under another name beside `to`, gives the whole copy its name, and removes
/// the original last: at every moment one of both is whole. Such a copy is a new file, with another mark.
/// Blocks. Any thread.
Outcome moveTree(const Entry &from, const Entry &to, const FileMark &expected);

} // namespace quillbay::elevate
