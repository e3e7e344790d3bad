#include "platform/linux/applications/DesktopEntry.h"

#include "platform/linux/applications/ApplicationEnvironment.h"
#include "platform/linux/applications/DesktopEntryRules.h"
#include "platform/linux/applications/LineStarts.h"

#include <algorithm>
#include <random>
#include <sstream>

#include <gmock/gmock.h>

namespace quillbay::platform {
namespace {

using ::testing::ElementsAre;

DesktopEntry parsed(const std::string &text, const std::vector<std::string> &locales = {})
{
    static std::string kept; // the entry points into it
    kept = text;
    const auto entry = parseDesktopEntry(kept, locales);
    EXPECT_TRUE(entry) << text;
    return entry.value_or(DesktopEntry());
}

TEST(LineStartsTest, AreThoseOfALineReaderWhereverTheLinesEnd)
{
    std::minstd_rand random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 300, 'x');
        for (size_t feeds = random() % 12; feeds > 0 && !text.empty(); --feeds)
            text[random() % text.size()] = '\n';
        std::vector<std::string> expected;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            expected.push_back(line);
        std::vector<std::string> lines;
        // On the heap and of this very size, so that reading past the end shows.
        const std::vector<char> exact(text.begin(), text.end());
        const char *end = exact.data() + exact.size();
        forEachLineStart(std::string_view(exact.data(), exact.size()), [&](const char *begin) {
            lines.emplace_back(begin, std::find(begin, end, '\n'));
            return true;
        });
        ASSERT_EQ(lines, expected);
    }
}

TEST(DesktopEntryTest, ReadsEveryKeyOfTheMainGroupAndNothingBehindIt)
{
    const DesktopEntry entry =
        parsed("[Desktop Entry]\nType=Application\nName=N\nIcon=i\nIcon[de]=no\nExec=e %U\n"
               "TryExec=t\nPath=/p\nCategories=A;B;\nX-Flatpak=org.x\nOnlyShowIn=\nNotShowIn=K;\n"
               "StartupNotify=false\nDBusActivatable=true\nTerminal=true\nNamed=no\nExecutable=no\n"
               "[Desktop Action a]\nName=Other\nExec=other\nHidden=true\nNoDisplay=true\n");
    EXPECT_EQ(entry.type, "Application");
    EXPECT_EQ(entry.name, "N");
    EXPECT_EQ(entry.icon, "i");
    EXPECT_EQ(entry.exec, "e %U");
    EXPECT_EQ(entry.tryExec, "t");
    EXPECT_EQ(entry.workingDirectory, "/p");
    EXPECT_EQ(entry.categories, "A;B;");
    EXPECT_EQ(entry.flatpakId, "org.x");
    EXPECT_EQ(entry.onlyShowIn, "");
    EXPECT_EQ(entry.notShowIn, "K;");
    EXPECT_EQ(entry.startupNotify, false);
    EXPECT_TRUE(entry.dbusActivatable && entry.terminal);
    EXPECT_FALSE(entry.hidden || entry.noDisplay);
    EXPECT_EQ(parsed("[Desktop Entry]\nName=x").startupNotify, std::nullopt);
}

TEST(DesktopEntryTest, TakesTheBestLocaleThatHasAUsableName)
{
    const std::string text =
        "[Desktop Entry]\nName[de]=D\nName=P\nName[de_AT]=A\nName[de]=D2\nName[d]=no\nName[de_ATX]=no\n"
        "Name[fr]=\xff\nName[it]=\nName[nl\nName[es]=E\n";
    EXPECT_EQ(parsed(text, {"de_AT", "de"}).name, "A");
    EXPECT_EQ(parsed(text, {"de_DE", "de"}).name, "D2"); // of one key twice the last
    EXPECT_EQ(parsed(text, {"fr", "es"}).name, "E");     // not UTF-8
    EXPECT_EQ(parsed(text, {"it"}).name, "P");           // empty
    EXPECT_EQ(parsed(text, {"nl"}).name, "P");           // bracket left open
    EXPECT_EQ(parsed(text).name, "P");
}

TEST(DesktopEntryTest, RefusesWhatIsNoEntry)
{
    for (const char *text :
         {"", "\n", "[", "[Desktop Entry", "Name=x", "[Other]\n[Desktop Entry]\nName=x", "[desktop entry]\n"})
        EXPECT_FALSE(parseDesktopEntry(text, {})) << text;
}

TEST(DesktopEntryTest, CutAnywhereItIsStillReadWithoutHarm)
{
    const std::string text = "\xEF\xBB\xBF# c\r\n[Desktop "
                             "Entry]\r\nName[de]=\xC3\xA4\r\nName=N\r\nExec=a\\\\\r\nCategories=A\\;\r\n";
    for (size_t size = 0; size <= text.size(); ++size) {
        const std::vector<char> cut(text.begin(), text.begin() + long(size));
        const auto entry = parseDesktopEntry({cut.data(), cut.size()}, {"de"});
        EXPECT_EQ(entry.has_value(), size >= text.find(']') + 1) << size;
        if (entry)
            displayCategory(entry->categories);
    }
}

TEST(DesktopEntryTest, UndoesEscapes)
{
    EXPECT_EQ(entryString("a\\sb\\nc\\td\\re\\\\f"), QStringLiteral("a b\nc\td\re\\f"));
    EXPECT_EQ(entryString("\\x\\"), QStringLiteral("\\x\\"));
    EXPECT_EQ(entryString("\xC3\xA4"), QStringLiteral("\u00e4"));
    EXPECT_FALSE(entryString({}).isNull());
}

TEST(DesktopEntryTest, CategoryFollowsOurOrderNotTheEntrys)
{
    const std::pair<const char *, const char *> cases[] = {
        {"", "Other"},
        {"GTK;KDE;Qt;", "Other"},
        {"game;", "Other"},
        {"Game", "Games"},
        {"Network;", "Internet"},
        {"Video;", "Multimedia"},
        {"Player;AudioVideo;", "Multimedia"},
        {"Utility;TextEditor;", "Utilities"},
        {"System;Settings;", "Settings"},
        {"Science;Education;", "Education"},
        {"Utility;Game;Development;", "Development"},
        {"Office\\;Game;", "Other"}, // an escaped semicolon does not end an element
        {";;Graphics", "Graphics"},
    };
    for (const auto &[categories, expected] : cases)
        EXPECT_EQ(displayCategory(categories).toStdString(), expected) << categories;
}

TEST(LocaleCandidatesTest, FirstVariableThatIsSetDecides)
{
    EXPECT_THAT(localeCandidates("", "", "", "de_AT.UTF-8@euro"),
                ElementsAre("de_AT@euro", "de_AT", "de@euro", "de"));
    EXPECT_THAT(localeCandidates("", "", "fr", "de_DE"), ElementsAre("fr"));
    EXPECT_THAT(localeCandidates("", "it_IT.UTF-8", "fr", "de_DE"), ElementsAre("it_IT", "it"));
    EXPECT_THAT(localeCandidates("pt_BR::de:pt", "it", "", ""), ElementsAre("pt_BR", "pt", "de"));
    for (const char *none : {"", "C", "POSIX", "C.UTF-8", ":", "@", ".UTF-8"})
        EXPECT_THAT(localeCandidates("", "", "", none), ElementsAre()) << none;
}

} // namespace
} // namespace quillbay::platform
