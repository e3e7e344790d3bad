#include "uninstaller/ResidualRules.h"

#include <gmock/gmock.h>

namespace quillbay {

namespace {

using platform::NamedChild;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

ResidualRules rules(const char *name, const char *identifier = "", const QStringList &wholeNames = {})
{
    return ResidualRules({QString::fromUtf8(name), QString::fromUtf8(identifier), wholeNames, {}});
}

TEST(ResidualRules, TextsMatchAnywhereInANameInAnyCase)
{
    const ResidualRules notes = rules("Notes", "com.Example.Jotter");
    EXPECT_TRUE(notes.matchesApplication("footNOTES backup.tar"));
    EXPECT_TRUE(notes.matchesApplication("x.COM.example.jotter.plist"));
    EXPECT_FALSE(notes.matchesApplication("note"));
    EXPECT_FALSE(notes.matchesName("com.example.jotter"));
    EXPECT_FALSE(notes.matchesIdentifier("notes"));

    EXPECT_TRUE(rules("Café Ünï").matchesName("my cafe\u0301 u\u0308nI\u0308 files"));
    EXPECT_TRUE(rules("Acme").matchesName("\xff"
                                          "acme\xfe"));
}

TEST(ResidualRules, NothingMatchesWhatIsNoName)
{
    for (const char *nothing : {"", " ", "\t\n", "\xef\xbf\xbd"}) {
        const ResidualRules none = rules(nothing, nothing, {QString::fromUtf8(nothing)});
        for (const char *entry : {"", " ", "anything", "a b", "\xff", "\xef\xbf\xbd", "."}) {
            EXPECT_FALSE(none.matchesApplication(entry)) << entry;
            EXPECT_FALSE(none.matchesName(entry)) << entry;
            EXPECT_FALSE(none.matchesIdentifier(entry)) << entry;
            EXPECT_FALSE(none.matchesSegment(entry)) << entry;
        }
        EXPECT_FALSE(none.hasIdentifier());
        EXPECT_THAT(none.pathsOf({"/x", NamedChild::Name::Identifier, ".savedState"}), IsEmpty());
    }
}

TEST(ResidualRules, WholeNamesMatchOnlyWhole)
{
    const ResidualRules code = rules("Visual Editor", "org.example.Editor", {QStringLiteral("Code")});
    EXPECT_TRUE(code.matchesApplication("cODE"));
    EXPECT_FALSE(code.matchesApplication("Code - OSS"));
    EXPECT_FALSE(code.matchesApplication("decode"));
    EXPECT_FALSE(code.matchesName("code"));
    EXPECT_FALSE(code.matchesIdentifier("code"));
}

TEST(ResidualRules, SegmentsKeepTheirCase)
{
    const ResidualRules notes = rules("", "com.Example.notes");
    EXPECT_TRUE(notes.matchesSegment("group.someone.NOTES"));
    EXPECT_FALSE(notes.matchesSegment("group.com.Example"));
    EXPECT_FALSE(notes.matchesSegment("com.other"));
    EXPECT_FALSE(rules("notes", "notes").matchesSegment("notes"));
    EXPECT_FALSE(rules("", "com..").matchesSegment("anything"));
    EXPECT_TRUE(rules("", "com.example.app").matchesSegment("happy"));
}

TEST(ResidualRules, NamedChildrenAreOneVisibleEntryEach)
{
    const auto paths = [](const QString &name) {
        const ResidualRules made({{}, name, {}, {name, QStringLiteral("other"), name}});
        return made.pathsOf({"/c", NamedChild::Name::Identifier, ".s"}) +
               made.pathsOf({"/p", NamedChild::Name::Program});
    };
    EXPECT_THAT(paths(QStringLiteral("org.Example.Ünit")),
                ElementsAre("/c/org.Example.Ünit.s", "/p/org.Example.Ünit", "/p/other"));
    for (const char *bad : {"..", ".", ".ssh", "a/b", "/", "../..", "", "x/../../y", "/etc"})
        EXPECT_THAT(paths(QString::fromUtf8(bad)), ElementsAre("/p/other")) << bad;
    EXPECT_THAT(paths(QStringLiteral("a") + QChar(u'\0') + u'b'), ElementsAre("/p/other"));
}

} // namespace

} // namespace quillbay
