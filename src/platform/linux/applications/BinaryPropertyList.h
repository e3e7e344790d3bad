#pragma once

#include <QString>

#include <string_view>

namespace quillbay::platform {

/// Whether `bytes` begins as a binary property list does.
bool isBinaryPropertyList(std::string_view bytes);

/// The string under `key` (ASCII) in the outermost dictionary of a binary property list; null if there is
/// none, if it is not a string, or if the list is damaged on the way to it. Empty but not null for the empty
/// string.
///
/// The format ("bplist00"): objects of a marker byte each, a table of their offsets, and a trailer of 32
/// bytes that gives the width of an offset and of an object reference, the number of objects, the root's
/// index and the table's place, all big-endian. Looks at the root's keys and at one value; no other object is
/// visited.
QString binaryPropertyListString(std::string_view bytes, std::string_view key);

} // namespace quillbay::platform
