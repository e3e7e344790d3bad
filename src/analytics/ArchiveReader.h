#pragma once

#include "analytics/MarlpostType.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillbay {

/// Bytes; ample for what is unsent.
constexpr std::size_t LongestPropertyList = std::size_t(64) * 1024 * 1024;

/// The value of a property list in the XML or the binary form: dictionaries, arrays, strings, booleans,
/// numbers (signed 64 bit), dates. Other values (data, identifiers) are left out. Nothing where the bytes are
/// no property list, a longer one than that, or one that is nested deeper than 128 or holds more than a
/// million values: libplist follows lists by recursion and copies what a binary one shares, so such a list
/// could end the process. Thread: any.
std::optional<MarlpostType> readPropertyList(std::string_view bytes);

} // namespace quillbay
