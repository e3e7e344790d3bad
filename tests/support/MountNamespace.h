#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quillbay::testing {

/// Runs `body` in a child process where it may mount what it likes and nobody sees it. `body` answers what
/// went wrong, or nothing. Empty answer: all went well; nothing: this machine allows no such namespace.
std::optional<std::string> inMountNamespace(const std::function<std::string()> &body);

/// Of the child: mounts `source` at `target` (which exists), or an empty file system where there is no
/// source.
bool mountAt(const std::string &source, const std::string &target);

} // namespace quillbay::testing
