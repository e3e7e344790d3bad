#include "uninstaller/ResidualFixture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::testing {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

class MacScan : public ::testing::Test
{
protected:
    MacScan()
    {
        tree.useMacLayout();
        tree.folder("~/Applications/Acme.app");
        tree.roots->facts.identifier = QStringLiteral("com.example.Acme");
    }

    void withoutIdentifier() { tree.roots->facts.identifier.clear(); }

    MadeTree tree;
};

/// One thing to find for each step, and next to it what other applications have there.
void fill(const MadeTree &tree)
{
    tree.file("~/Library/Preferences/com.example.Acme.plist", 10);
    tree.file("~/Library/Preferences/com.example.Other.plist", 10);
    tree.file("/Library/Preferences/ACME.plist", 11);
    tree.file("~/Library/Application Support/acme/deep/er/data", 12);
    tree.file("~/Library/Application Support/acme/.hidden", 1000);
    tree.file("~/Library/Caches/com.example.acme/x", 13);
    tree.file("~/Library/Logs/Acme/x", 14);
    tree.file("~/Library/Containers/com.example.Acme/x", 15);
    tree.file("~/Library/Containers/com.example.Acme.helper/x", 15);
    tree.file("~/Library/Group Containers/ABC.example.shared/x", 16);
    tree.file("~/Library/LaunchAgents/com.example.Acme.agent.plist", 17);
    tree.file("/Library/LaunchAgents/acme.plist", 18);
    tree.file("/Library/LaunchDaemons/acmed.plist", 19);
    tree.file("~/Library/Logs/DiagnosticReports/Acme_2024.crash", 20);
    tree.file("~/Library/Logs/DiagnosticReports/com.example.crash", 20);
    tree.file("~/Library/Saved Application State/com.example.Acme.savedState/x", 21);
    tree.file("~/Library/Extensions/com.example.Acme.kext/x", 22);
    tree.file("~/Library/Extensions/Acme.kext/x", 22);
    tree.file("/Library/Receipts/acme.pkg", 23);
    tree.file("/Library/Caches/acme/x", 99);
    tree.file("~/Library/acme/x", 99);
}

TEST_F(MacScan, EachStepFindsItsOwnInOrder)
{
    fill(tree);
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                ElementsAre("Preferences ~/Library/Preferences/com.example.Acme.plist 10",
                            "Preferences /Library/Preferences/ACME.plist 11",
                            "Application Support ~/Library/Application Support/acme 12",
                            "Caches ~/Library/Caches/com.example.acme 13", "Logs ~/Library/Logs/Acme 14",
                            "Containers ~/Library/Containers/com.example.Acme 15",
                            "Group Containers ~/Library/Group Containers/ABC.example.shared 16",
                            "Launch Agents & Daemons ~/Library/LaunchAgents/com.example.Acme.agent.plist 17",
                            "Launch Agents & Daemons /Library/LaunchAgents/acme.plist 18",
                            "Launch Agents & Daemons /Library/LaunchDaemons/acmed.plist 19",
                            "Crash Reports ~/Library/Logs/DiagnosticReports/Acme_2024.crash 20",
                            "Saved State ~/Library/Saved Application State/com.example.Acme.savedState 21",
                            "Extensions ~/Library/Extensions/com.example.Acme.kext 22",
                            "Receipts /Library/Receipts/acme.pkg 23"));
}

TEST_F(MacScan, WithoutIdentifierOnlyTheNameFinds)
{
    fill(tree);
    withoutIdentifier();
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                ElementsAre("Preferences ~/Library/Preferences/com.example.Acme.plist 10",
                            "Preferences /Library/Preferences/ACME.plist 11",
                            "Application Support ~/Library/Application Support/acme 12",
                            "Caches ~/Library/Caches/com.example.acme 13", "Logs ~/Library/Logs/Acme 14",
                            "Launch Agents & Daemons ~/Library/LaunchAgents/com.example.Acme.agent.plist 17",
                            "Launch Agents & Daemons /Library/LaunchAgents/acme.plist 18",
                            "Launch Agents & Daemons /Library/LaunchDaemons/acmed.plist 19",
                            "Crash Reports ~/Library/Logs/DiagnosticReports/Acme_2024.crash 20",
                            "Receipts /Library/Receipts/acme.pkg 23"));
    EXPECT_THAT(tree.rows({}), IsEmpty());
}

TEST_F(MacScan, PlainFilesInCachesAndLogsComeTwice)
{
    tree.file("~/Library/Caches/acme.log", 5);
    tree.file("~/Library/Caches/acme.d/x", 7);
    tree.file("~/Library/Logs/acme.log", 6);
    tree.link("~/Library/Logs/acme.link", "four");
    std::vector<std::string> expected{
        "Caches ~/Library/Caches/acme.log 5", "Caches ~/Library/Caches/acme.d 7",
        "Logs ~/Library/Logs/acme.log 6",     "Logs ~/Library/Logs/acme.log 6",
        "Logs ~/Library/Logs/acme.link 4",    "Logs ~/Library/Logs/acme.link 4"};
    withoutIdentifier();
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")), ::testing::UnorderedElementsAreArray(expected));

    expected.emplace_back("Caches ~/Library/Caches/acme.log 5");
    tree.roots->facts.identifier = QStringLiteral("unrelated");
    const std::vector<AppResidualFile> rows = tree.scan(QStringLiteral("Acme"));
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")), ::testing::UnorderedElementsAreArray(expected));
    // The second look comes after the first, as rows of their own.
    ASSERT_EQ(rows.size(), 8U);
    EXPECT_TRUE(rows[3].path.endsWith("/acme.log"));
    std::set<QUuid> ids;
    for (const AppResidualFile &row : rows)
        ids.insert(row.id);
    EXPECT_EQ(ids.size(), rows.size());
}

TEST_F(MacScan, FoldersCountNothingWhereFilesAreMeant)
{
    tree.file("~/Library/Preferences/Acme/x", 50);
    tree.file("~/Library/LaunchAgents/Acme/x", 50);
    tree.file("~/Library/Logs/DiagnosticReports/Acme/x", 50);
    tree.file("/Library/Receipts/Acme/x", 50);
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                UnorderedElementsAre("Preferences ~/Library/Preferences/Acme 0",
                                     "Launch Agents & Daemons ~/Library/LaunchAgents/Acme 0",
                                     "Crash Reports ~/Library/Logs/DiagnosticReports/Acme 0",
                                     "Receipts /Library/Receipts/Acme 0"));
}

TEST_F(MacScan, HiddenEntriesAreNoRows)
{
    for (const char *folder : {"Preferences", "Application Support", "Caches", "Logs", "LaunchAgents"})
        tree.file(QByteArray("~/Library/") + folder + "/.acme");
    tree.roots->facts.identifier = QStringLiteral(".acme");
    tree.file("~/Library/Containers/.acme/x");
    tree.file("~/Library/Saved Application State/.acme.savedState/x");
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")), IsEmpty());
}

TEST_F(MacScan, TheApplicationItselfIsTheFirstRow)
{
    tree.file("~/Applications/Acme.app/Contents/MacOS/acme", 40);
    std::vector<AppResidualFile> rows = tree.scan(QStringLiteral("Acme"));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(tree.line(rows[0]), "Application ~/Applications/Acme.app 40");
    EXPECT_EQ(rows[0].displayName, QStringLiteral("Acme.app"));
    EXPECT_EQ(rows[0].identity, FileIdentity::of(rows[0].path));
    EXPECT_TRUE(rows[0].isSelected && rows[0].isUserDeletable);

    rows = tree.scan(QStringLiteral("Gone"), QFile::decodeName(tree.path("/System/Gone.app")));
    ASSERT_EQ(rows.size(), 1U) << "also where nothing is left of it";
    EXPECT_FALSE(rows[0].identity || rows[0].isSelected);
    EXPECT_TRUE(isSystemPath(QStringLiteral("/System/Applications/Chess.app")));
    EXPECT_FALSE(isSystemPath(QStringLiteral("/Systematic/Chess.app")));
}

TEST_F(MacScan, WhatTheUserMayNotDeleteIsNotSelected)
{
    const QByteArray kept = tree.folder("/Library/LaunchDaemons");
    tree.file("/Library/LaunchDaemons/acmed.plist");
    ::chmod(kept.constData(), 0555);
    const QByteArray sticky = tree.folder("/Library/Receipts");
    tree.file("/Library/Receipts/acme.pkg");
    ::chmod(sticky.constData(), 01777);
    const QByteArray open = tree.folder("~/Library/Preferences");
    tree.folder("~/Library/Preferences/acme.d");
    ::chmod((open + "/acme.d").constData(), 0555);
    tree.file("~/Library/Preferences/acme.plist");
    ::chmod(open.constData(), 0777);
    const bool isOwn = ::geteuid() != 0;
    std::map<QByteArray, bool> deletable;
    {
        const OrdinaryUser user;
        for (const AppResidualFile &row : tree.scan(QStringLiteral("Acme"))) {
            deletable[row.path.mid(row.path.lastIndexOf('/') + 1)] = row.isUserDeletable;
            EXPECT_EQ(row.isSelected, row.isUserDeletable);
        }
    }
    ::chmod((open + "/acme.d").constData(), 0755);
    ::chmod(kept.constData(), 0755);
    EXPECT_FALSE(deletable.at("acmed.plist"));
    EXPECT_EQ(deletable.at("acme.pkg"), isOwn) << "a sticky folder keeps what is another's";
    EXPECT_TRUE(deletable.at("acme.plist"));
    EXPECT_FALSE(deletable.at("acme.d")) << "nothing leaves a folder that is not writable";
}

TEST_F(MacScan, UnreadableFoldersAreLeftOut)
{
    tree.file("~/Library/Preferences/acme.plist");
    tree.file("/Library/Preferences/acme.plist");
    tree.file("~/Library/Caches/acme/x", 9);
    ::chmod(tree.path("~/Library/Preferences").constData(), 0);
    {
        const OrdinaryUser user;
        EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                    UnorderedElementsAre("Preferences /Library/Preferences/acme.plist 1",
                                         "Caches ~/Library/Caches/acme 9"));
    }
    ::chmod(tree.path("~/Library/Preferences").constData(), 0755);
}

} // namespace

} // namespace quillbay::testing
