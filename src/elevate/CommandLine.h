#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbay::elevate {

/// What is to be done as root.
struct Command
{
    enum class Kind { Remove, Move };
    Kind kind = Kind::Remove;
    std::string source;
    std::string destination; ///< Of Move alone.

    bool operator==(const Command &) const = default;
};

/// Reads the two command lines that there are, `rm -rf 'PATH'` and `mv 'PATH' 'PATH'`, where an apostrophe in
/// a path is written `'\''`. To the byte: another blank, option, quote or ending is no command. No shell ever
/// sees the line.
std::optional<Command> parseCommand(std::string_view line);

/// Undoes `%XX`, by which bytes travel that are no printable text. Nothing where a `%` stands for itself.
std::optional<std::string> unescaped(std::string_view text);

} // namespace quillbay::elevate
