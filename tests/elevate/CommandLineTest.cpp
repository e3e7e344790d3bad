#include "elevate/CommandLine.h"

#include "support/HostileTree.h"

#include <gtest/gtest.h>

namespace quillbay::elevate {

namespace {

std::string quoted(const std::string &path)
{
    std::string result = "'";
    for (const char byte : path)
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    return result + '\'';
}

std::string lineOf(const Command &command)
{
    return command.kind == Command::Kind::Remove
               ? "rm -rf " + quoted(command.source)
               : "mv " + quoted(command.source) + ' ' + quoted(command.destination);
}

} // namespace

TEST(CommandLine, EveryLineHasOneMeaningAndEveryMeaningOneLine)
{
    quillbay::testing::HostileTree names(7, {});
    int understood = 0;
    for (int i = 0; i < 20000; ++i) {
        Command command{i % 2 ? Command::Kind::Move : Command::Kind::Remove, '/' + names.name(), {}};
        if (command.kind == Command::Kind::Move)
            command.destination = '/' + names.name();
        std::string line = lineOf(command);
        ASSERT_EQ(parseCommand(line), command) << line;

        // A line that was damaged is none, or is the line of what it is taken for.
        const std::size_t at = std::size_t(names.number(int(line.size())));
        const char bytes[] = {'\'', '\\', ' ', '-', '\n', '"', 'r', '\0'};
        switch (names.number(3)) {
        case 0:
            line.erase(at, std::size_t(1 + names.number(4)));
            break;
        case 1:
            line.insert(at, 1, bytes[names.number(8)]);
            break;
        default:
            line[at] = bytes[names.number(8)];
        }
        if (const auto other = parseCommand(line)) {
            ++understood;
            ASSERT_EQ(lineOf(*other), line);
        }
    }
    EXPECT_GT(understood, 1000);
}

TEST(CommandLine, NothingElseIsACommand)
{
    for (const char *line : {"",
                             "rm -rf /",
                             "rm -rf \"/a\"",
                             "rm -rf '/a' '/b'",
                             "rm -rf '/a'; reboot",
                             "rm -r '/a'",
                             "rm  -rf '/a'",
                             "rm -rf '/a' ",
                             " rm -rf '/a'",
                             "rm -rf -- '/a'",
                             "rm -rf '/a",
                             "rm -rf '/a''",
                             "rm -rf ''\\'",
                             "mv '/a'",
                             "mv '/a' ",
                             "mv '/a'  '/b'",
                             "mv '/a' '/b' '/c'",
                             "mv -f '/a' '/b'",
                             "cp '/a' '/b'",
                             "RM -RF '/a'"})
        EXPECT_FALSE(parseCommand(line)) << line;
}

TEST(CommandLine, EscapesAreUndoneOrRefused)
{
    EXPECT_EQ(unescaped("a%25%0A%fFb"), "a%\n\xff"
                                        "b");
    for (const char *text : {"%", "a%4", "%zz", "%4g", "%-1", "%+1", "% 1", "%%41"})
        EXPECT_FALSE(unescaped(text)) << text;
}

} // namespace quillbay::elevate
