#include "uninstaller/Removal.h"

#include "uninstaller/ReceiptStore.h"
#include "uninstaller/removal/RemovalFixture.h"

#include <QFile>
#include <QRegularExpression>

#include <filesystem>

namespace quillbay {

using platform::ElevationResult;
using platform::FileResult;
using testing::RemovalTest;
using Outcome = ElevationResult::Outcome;

namespace {

constexpr char denied[] = ": Administrator access was denied or cancelled.";

QStringList message(const char *name, const char *rest)
{
    return {QString::fromLatin1(name) + QString::fromLatin1(rest)};
}

FileResult notPermitted()
{
    return {FileResult::Outcome::NotPermitted, QStringLiteral("Permission denied")};
}

} // namespace

TEST_F(RemovalTest, NothingChosenAsksNobody)
{
    for (const DeletionMethod method : {DeletionMethod::Trash, DeletionMethod::Permanent}) {
        const RemovalResult result = remove({}, method);
        EXPECT_EQ(result.removedCount, 0);
        EXPECT_EQ(result.freedBytes, 0);
        EXPECT_TRUE(result.errors.isEmpty());
    }
    EXPECT_TRUE(elevation.commands.isEmpty());
    EXPECT_TRUE(ReceiptStore::files(QFile::decodeName(home + "/receipts")).isEmpty());
}

TEST_F(RemovalTest, TheSecondOfTwoEqualRowsAndAVanishedOneDoNotCount)
{
    const QByteArray path = file("twice");
    const QByteArray vanished = file("vanished");
    const QList<RemovalItem> items = {item(path, true, 10), item(vanished, false, 5), item(path, true, 10),
                                      item(file("last"), true, 7)};
    std::filesystem::remove(vanished.toStdString());
    const RemovalResult result = remove(items, DeletionMethod::Permanent);
    EXPECT_EQ(result.removedCount, 2);
    EXPECT_EQ(result.freedBytes, 17);
    EXPECT_TRUE(result.errors.isEmpty());
    EXPECT_EQ(result.removedPaths, (QList<QByteArray>{path, rows + "/last"}));
    EXPECT_TRUE(elevation.commands.isEmpty());
}

TEST_F(RemovalTest, ForGoodAsTheUserFirstThenElevated)
{
    files.failure = [](const QByteArray &) { return notPermitted(); };
    const QByteArray one = file("one");
    const QByteArray two = file("Bob's App");
    const QByteArray three = file("three");
    elevation.perform = [&](const platform::ElevatedCommand &command) {
        if (command.line.contains("one"))
            return ElevationResult{Outcome::Refused, {}};
        if (command.line.contains("three"))
            return ElevationResult{Outcome::CommandFailed, QStringLiteral("broken")};
        return testing::runHelper(command);
    };
    const RemovalResult result =
        remove({item(one), item(two, true, 4), item(three)}, DeletionMethod::Permanent);
    EXPECT_EQ(lines(), (QByteArrayList{"rm -rf '" + one + '\'', "rm -rf '" + rows + "/Bob'\\''s App'",
                                       "rm -rf '" + three + '\''}))
        << "a refusal does not end the run, and each is asked for by itself";
    EXPECT_EQ(result.errors, (QStringList{QStringLiteral("one: Permission denied"),
                                          QStringLiteral("three: Permission denied")}));
    EXPECT_EQ(result.removedCount, 1);
    EXPECT_EQ(result.freedBytes, 4);
    EXPECT_FALSE(exists(two));
    EXPECT_TRUE(exists(one));
    EXPECT_TRUE(exists(three));
}

TEST_F(RemovalTest, WhatIsNotTheUsersGoesElevatedAtOnce)
{
    bool isTried = false;
    files.failure = [&](const QByteArray &) {
        isTried = true;
        return notPermitted();
    };
    const QByteArray path = file("system");
    for (const Outcome outcome : {Outcome::Refused, Outcome::NoAgent, Outcome::NotPermitted,
                                  Outcome::Unavailable, Outcome::CommandFailed, Outcome::Abandoned}) {
        elevation.perform = [&](const platform::ElevatedCommand &) { return ElevationResult{outcome, {}}; };
        EXPECT_EQ(remove({item(path, false)}, DeletionMethod::Permanent).errors, message("system", denied));
    }
    elevate();
    EXPECT_EQ(remove({item(path, false)}, DeletionMethod::Permanent).removedCount, 1);
    EXPECT_FALSE(isTried);
    EXPECT_FALSE(exists(path));
}

TEST_F(RemovalTest, TheTrashIsTriedFirstWhoeverOwnsIt)
{
    if (!hasTrash())
        GTEST_SKIP() << "GIO does not trash in the folder for temporary files: this was NOT tested";
    const QByteArray path = file("a b.log", "content");
    const RemovalItem row = item(path, false, 3);
    const RemovalResult result = remove({row, row}, DeletionMethod::Trash);
    EXPECT_EQ(result.removedCount, 1);
    EXPECT_EQ(result.freedBytes, 3);
    EXPECT_TRUE(result.errors.isEmpty());
    EXPECT_TRUE(elevation.commands.isEmpty());
    EXPECT_EQ(inTrash("files"), QByteArrayList{"a b.log"});
    EXPECT_EQ(FileIdentity::of(trashFolder + "/files/a b.log"), row.identity);
    ASSERT_EQ(result.receipt.records.size(), 1);
    EXPECT_EQ(result.receipt.records[0].file, row.identity);
    EXPECT_FALSE(result.receipt.records[0].isElevated);
}

TEST_F(RemovalTest, AFailingTrashTakesTheElevatedMoveAndNoOtherWay)
{
    breakTrash();
    const QByteArray path = file("report.log", "first");
    elevate();
    const FileIdentity identity = item(path).identity;
    const RemovalResult result = remove({item(path)}, DeletionMethod::Trash);
    EXPECT_EQ(result.removedCount, 1);
    EXPECT_EQ(lines(), QByteArrayList{"mv '" + path + "' '" + trashFolder + "/files/report.log'"});
    EXPECT_EQ(FileIdentity::of(trashFolder + "/files/report.log"), identity);
    EXPECT_EQ(inTrash("info"), QByteArrayList{"report.log.trashinfo"});

    // The name is taken now: once more by a name of its own, then a name of a record alone.
    EXPECT_EQ(remove({item(file("report.log", "second"))}, DeletionMethod::Trash).removedCount, 1);
    testing::writeFile((trashFolder + "/info/report.trashinfo").toStdString(), "a record alone");
    EXPECT_EQ(remove({item(file("report"))}, DeletionMethod::Trash).removedCount, 1);
    const QByteArrayList names = inTrash("files");
    ASSERT_EQ(names.size(), 3);
    int unique = 0;
    for (const QByteArray &name : names)
        unique += QRegularExpression(QStringLiteral("^report_[0-9A-F]{8}(\\.log)?$"))
                      .match(QString::fromLatin1(name))
                      .hasMatch();
    EXPECT_EQ(unique, 2);
    EXPECT_EQ(inTrash("info").size(), 4);
}

TEST_F(RemovalTest, AFailingMoveLeavesTheFileAndNoRecord)
{
    breakTrash();
    const QByteArray path = file("row", "content");
    for (const Outcome outcome : {Outcome::Refused, Outcome::NoAgent, Outcome::NotPermitted,
                                  Outcome::Unavailable, Outcome::CommandFailed, Outcome::Abandoned}) {
        elevation.perform = [&](const platform::ElevatedCommand &) { return ElevationResult{outcome, {}}; };
        EXPECT_EQ(remove({item(path)}, DeletionMethod::Trash).errors, message("row", ": No Trash here"));
        EXPECT_TRUE(exists(path));
        EXPECT_TRUE(inTrash("files").isEmpty());
        EXPECT_TRUE(inTrash("info").isEmpty());
    }
    const qsizetype asked = elevation.commands.size();
    trash.reserveFailure = FileResult{FileResult::Outcome::Failed, QStringLiteral("full")};
    EXPECT_EQ(remove({item(path)}, DeletionMethod::Trash).errors, message("row", ": No Trash here"));
    EXPECT_EQ(elevation.commands.size(), asked) << "without a record nothing goes there";
    for (const QByteArray &line : lines())
        EXPECT_TRUE(line.startsWith("mv '")) << line.constData();
    EXPECT_TRUE(exists(path));
}

TEST_F(RemovalTest, ProtectedAndMountedAndChangedRowsAreLeftAlone)
{
    elevate();
    const QByteArray path = file("row");
    const RemovalItem row = item(path);
    const QByteArray link = rows + "/way";
    std::filesystem::create_directory_symlink(rows.toStdString(), link.toStdString());
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    for (const DeletionMethod method : {DeletionMethod::Trash, DeletionMethod::Permanent}) {
        for (const bool isUserDeletable : {true, false}) {
            for (const QByteArray &folder :
                 {home, config, rows + "/way/..", QByteArray("/"), rows + "/./row"})
                EXPECT_EQ(remove({item(folder, isUserDeletable)}, method).errors.size(), 1)
                    << folder.constData();

            // By its own name and by a way through a link.
            isProtected = [&](const QByteArray &asked) { return asked == path; };
            for (const QByteArray &each : {path, link + "/row"})
                EXPECT_EQ(remove({item(each, isUserDeletable)}, method).errors,
                          message("row", ": This folder is protected and was left alone."));
            isProtected = [](const QByteArray &) { return false; };

            files.isMounted = true;
            EXPECT_EQ(remove({item(path, isUserDeletable)}, method).errors,
                      message("row", ": A file system is mounted there, so it was left alone."));
            files.isMounted = false;

            RemovalItem other = row;
            other.isUserDeletable = isUserDeletable;
            for (FileIdentity changed :
                 {FileIdentity{row.identity.device + 1, row.identity.inode, row.identity.kind},
                  FileIdentity{row.identity.device, row.identity.inode + 1, row.identity.kind},
                  FileIdentity{row.identity.device, row.identity.inode, S_IFDIR}}) {
                other.identity = changed;
                EXPECT_EQ(remove({other}, method).errors,
                          message("row", ": It has changed since the scan and was left alone."));
            }
        }
    }
    EXPECT_TRUE(elevation.commands.isEmpty());
    EXPECT_TRUE(exists(path));
    EXPECT_TRUE(inTrash("files").isEmpty());
}

// The check before and the deed are two moments; what happens in between is for those who do the deed.
TEST_F(RemovalTest, AChangeSeenByTheDeedItselfIsReportedAndNotElevated)
{
    const QByteArray path = file("row");
    files.failure = [](const QByteArray &) { return FileResult{FileResult::Outcome::Changed, {}}; };
    EXPECT_EQ(remove({item(path)}, DeletionMethod::Permanent).errors,
              message("row", ": It has changed since the scan and was left alone."));
    files.failure = [](const QByteArray &) { return FileResult{FileResult::Outcome::Mounted, {}}; };
    EXPECT_EQ(remove({item(path)}, DeletionMethod::Permanent).errors,
              message("row", ": A file system is mounted there, so it was left alone."));
    EXPECT_TRUE(elevation.commands.isEmpty());

    // Swapped while the person is being asked.
    breakTrash();
    elevation.perform = [&](const platform::ElevatedCommand &command) {
        std::filesystem::rename(path.toStdString(), (path + "-old").toStdString());
        std::filesystem::create_symlink((outside + "/file1").toStdString(), path.toStdString());
        const ElevationResult result = testing::runHelper(command);
        std::filesystem::rename((path + "-old").toStdString(), path.toStdString());
        return result;
    };
    EXPECT_EQ(remove({item(path)}, DeletionMethod::Trash).errors,
              message("row", ": It has changed since the scan and was left alone."));
    EXPECT_EQ(remove({item(path, false)}, DeletionMethod::Permanent).errors,
              message("row", ": It has changed since the scan and was left alone."));
    EXPECT_TRUE(exists(path));
    EXPECT_TRUE(inTrash("info").isEmpty());
}

TEST_F(RemovalTest, EachFinishedRemovalIsOnRecord)
{
    const QByteArray plain = file("plain \xff");
    const QByteArray elevated = file("elevated");
    elevation.perform = [&](const platform::ElevatedCommand &command) {
        // What was done before is on record while the person is asked about the next.
        const QStringList written = ReceiptStore::files(QFile::decodeName(home + "/receipts"));
        EXPECT_EQ(written.size(), 1);
        EXPECT_EQ(ReceiptStore::read(written.value(0)).records.size(), 1);
        return testing::runHelper(command);
    };
    const RemovalResult result =
        remove({item(plain, true, 10), item(elevated, false, 20)}, DeletionMethod::Permanent);
    const QDateTime when(QDate(2024, 5, 1), QTime(12, 0, 0, 250), Qt::UTC);
    const Receipt expected{
        {{item(plain).displayName, plain, DeletionMethod::Permanent, false, 10, when, {}},
         {QStringLiteral("elevated"), elevated, DeletionMethod::Permanent, true, 20, when, {}}}};
    EXPECT_EQ(result.receipt, expected);
    const QStringList written = ReceiptStore::files(QFile::decodeName(home + "/receipts"));
    ASSERT_EQ(written.size(), 1);
    EXPECT_EQ(ReceiptStore::read(written[0]), expected);
}

TEST_F(RemovalTest, AStoppedRunEndsAfterTheRowAtHand)
{
    const QByteArray first = file("first");
    const QByteArray second = file("second");
    elevation.perform = [&](const platform::ElevatedCommand &command) {
        stopSource.request_stop();
        return testing::runHelper(command);
    };
    const RemovalResult result = remove({item(first, false), item(second)}, DeletionMethod::Permanent);
    EXPECT_EQ(result.removedCount, 1);
    EXPECT_TRUE(exists(second));
}

} // namespace quillbay
