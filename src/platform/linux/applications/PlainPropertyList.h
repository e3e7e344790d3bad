#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace quillbay::platform {

/// The string under `key` in the outermost dictionary of an XML property list, for the lists that need no XML
/// parser: complete, every element closed, no comments, no CDATA sections, no internal subset, no references
/// in the value. Nearly every list is one, and libplist takes ten times as long as this to build a tree of
/// which one value is asked for.
///
/// No answer where the list is not of this simple kind, right or wrong: the real parser is to be asked.
/// Otherwise a null string if there is no such key or it is not a string, an empty one if it is the empty
/// string.
std::optional<QString> plainPropertyListString(std::string_view text, std::string_view key);

} // namespace quillbay::platform
