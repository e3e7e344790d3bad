#include "elevate/CommandLine.h"

#include <charconv>

namespace quillbay::elevate {

namespace {

constexpr std::string_view quotedApostrophe = "'\\''";

bool take(std::string_view &text, std::string_view prefix)
{
    if (text.substr(0, prefix.size()) != prefix)
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<std::string> takeQuoted(std::string_view &text)
{
    if (!take(text, "'"))
        return std::nullopt;
    std::string result;
    while (!text.empty()) {
        if (take(text, quotedApostrophe)) {
            result += '\'';
        } else if (take(text, "'")) {
            return result;
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Command> parseCommand(std::string_view line)
{
    Command command;
    if (take(line, "mv ")) {
        command.kind = Command::Kind::Move;
    } else if (!take(line, "rm -rf ")) {
        return std::nullopt;
    }
    auto source = takeQuoted(line);
    if (!source)
        return std::nullopt;
    command.source = std::move(*source);
    if (command.kind == Command::Kind::Move) {
        auto destination = take(line, " ") ? takeQuoted(line) : std::nullopt;
        if (!destination)
            return std::nullopt;
        command.destination = std::move(*destination);
    }
    return line.empty() ? std::optional(std::move(command)) : std::nullopt;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        if (!take(text, "%")) {
            result += text.front();
            text.remove_prefix(1);
            continue;
        }
        unsigned byte = 0;
        const std::string_view digits = text.substr(0, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || digits.size() != 2 || end != digits.data() + 2)
            return std::nullopt;
        result += char(byte);
        text.remove_prefix(2);
    }
    return result;
}

} // namespace quillbay::elevate
