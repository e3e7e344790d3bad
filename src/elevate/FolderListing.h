#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillbay::elevate {

/// The names in a folder that is open for reading, without `.` and `..`, in no order. Nothing with `errno`
/// set where reading fails. Starts at the folder's beginning and leaves the descriptor open.
std::optional<std::vector<std::string>> namesIn(int folder);

} // namespace quillbay::elevate
