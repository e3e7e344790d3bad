#include "uninstaller/PutBack.h"

#include "uninstaller/removal/RemovalFixture.h"

#include <filesystem>
#include <fstream>

namespace quillbay {

using platform::ElevationResult;
using platform::FileResult;
using testing::difference;
using testing::HostileTree;
using testing::RemovalTest;
using testing::snapshotOf;
using testing::TreeSnapshot;
using Reason = PutBackFailure::Reason;
using Outcome = ElevationResult::Outcome;

namespace {

class PutBack : public RemovalTest
{
protected:
    void SetUp() override
    {
        if (!hasTrash())
            GTEST_SKIP() << "GIO does not trash in the folder for temporary files: this was NOT tested";
    }

    QList<Reason> reasons(const PutBackResult &result) const
    {
        QList<Reason> all;
        for (const PutBackFailure &each : result.left)
            all.append(each.reason);
        return all;
    }
};

FileResult notPermitted()
{
    return {FileResult::Outcome::NotPermitted, QStringLiteral("Permission denied")};
}

} // namespace

TEST_F(PutBack, EverythingIsAsItWas)
{
    HostileTree tree(211, outside.toStdString());
    elevate();
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        if (round % 5 == 0)
            breakTrash();
        else
            trash.failure = {};
        QList<RemovalItem> items;
        for (int count = 1 + tree.number(4); count > 0; --count) {
            const QByteArray path = rows + '/' + QByteArray::fromStdString(tree.name());
            tree.make(path.toStdString());
            items.append(item(path));
        }
        const TreeSnapshot before = snapshotOf(rows.toStdString());
        const RemovalResult removed = remove(items, DeletionMethod::Trash);
        const PutBackResult result = back(removed.receipt);
        ASSERT_EQ(result.restored.size(), removed.removedCount);
        ASSERT_TRUE(result.left.isEmpty());
        ASSERT_EQ(difference(before, snapshotOf(rows.toStdString())), "");
        ASSERT_TRUE(inTrash("files").isEmpty());
        ASSERT_TRUE(inTrash("info").isEmpty()) << "no record of what is back";
        ASSERT_EQ(damage(), "");
        ASSERT_EQ(back(removed.receipt).left.size(), removed.removedCount) << "once";
        std::filesystem::remove_all(rows.toStdString());
        std::filesystem::create_directory(rows.toStdString());
    }
}

TEST_F(PutBack, ARowInsideARowComesBackIntoIt)
{
    const QByteArray folder = rows + "/folder";
    std::filesystem::create_directories((folder + "/deeper").toStdString());
    file("folder/kept", "kept");
    file("folder/deeper/inner", "inner");
    const TreeSnapshot before = snapshotOf(rows.toStdString());
    const RemovalResult removed = remove(
        {item(folder + "/deeper/inner"), item(folder + "/deeper"), item(folder)}, DeletionMethod::Trash);
    ASSERT_EQ(removed.removedCount, 3);
    EXPECT_EQ(back(removed.receipt).restored,
              (QList<QByteArray>{folder, folder + "/deeper", folder + "/deeper/inner"}));
    EXPECT_EQ(difference(before, snapshotOf(rows.toStdString())), "");

    // The folder above is gone by other means: it is made again.
    const RemovalResult again = remove({item(folder + "/deeper/inner")}, DeletionMethod::Trash);
    std::filesystem::remove_all(folder.toStdString());
    EXPECT_EQ(back(again.receipt).restored.size(), 1);
    EXPECT_TRUE(exists(folder + "/deeper/inner"));
}

TEST_F(PutBack, WhatIsThereNowStaysAndWhatIsGoneIsSaidToBe)
{
    const QByteArray taken = file("taken", "old");
    const QByteArray link = file("link", "old");
    const QByteArray emptied = file("emptied", "old");
    const QByteArray replaced = file("replaced", "old");
    const RemovalResult removed =
        remove({item(taken), item(link), item(emptied), item(replaced)}, DeletionMethod::Trash);
    ASSERT_EQ(removed.removedCount, 4);
    file("taken", "new");
    // A link to nothing is something all the same.
    std::filesystem::create_symlink("nowhere", link.toStdString());
    std::filesystem::remove((trashFolder + "/files/emptied").toStdString());
    // The same name in the Trash, by another file.
    testing::writeFile((trashFolder + "/files/other").toStdString(), "another");
    std::filesystem::rename((trashFolder + "/files/other").toStdString(),
                            (trashFolder + "/files/replaced").toStdString());
    const PutBackResult result = back(removed.receipt);
    EXPECT_TRUE(result.restored.isEmpty());
    EXPECT_EQ(reasons(result),
              (QList<Reason>{Reason::Gone, Reason::Gone, Reason::Occupied, Reason::Occupied}));
    EXPECT_EQ(result.left[0].path, replaced);
    EXPECT_EQ(result.left[0].message, QStringLiteral("replaced: It is no longer in the Trash."));
    EXPECT_EQ(result.left[3].message, QStringLiteral("taken: Something else is in its place now."));
    std::ifstream now(taken.toStdString());
    std::string content;
    now >> content;
    EXPECT_EQ(content, "new");
    EXPECT_TRUE(exists(trashFolder + "/files/taken"));
    EXPECT_TRUE(exists(trashFolder + "/info/taken.trashinfo"));
    EXPECT_TRUE(elevation.commands.isEmpty());
}

TEST_F(PutBack, APlaceOfTheSystemsIsFilledElevated)
{
    const QByteArray path = file("it's", "x");
    const RemovalResult removed = remove({item(path)}, DeletionMethod::Trash);
    files.failure = [](const QByteArray &) { return notPermitted(); };
    const struct
    {
        Outcome outcome;
        Reason reason;
    } failures[] = {{Outcome::Refused, Reason::Refused},      {Outcome::NoAgent, Reason::Refused},
                    {Outcome::Unavailable, Reason::Refused},  {Outcome::Changed, Reason::Gone},
                    {Outcome::CommandFailed, Reason::Failed}, {Outcome::Abandoned, Reason::Refused}};
    for (const auto &each : failures) {
        elevation.perform = [&](const platform::ElevatedCommand &) {
            return ElevationResult{each.outcome, {}};
        };
        EXPECT_EQ(reasons(back(removed.receipt)), QList<Reason>{each.reason});
        EXPECT_TRUE(exists(trashFolder + "/info/it's.trashinfo"));
    }
    elevate();
    EXPECT_EQ(back(removed.receipt).restored, QList<QByteArray>{path});
    EXPECT_EQ(lines().last(), "mv '" + trashFolder + "/files/it'\\''s' '" + rows + "/it'\\''s'");
    EXPECT_TRUE(exists(path));
    EXPECT_TRUE(inTrash("info").isEmpty());
}

TEST_F(PutBack, OtherFailuresAskNobodyAndWhatIsGoneForGoodIsNotTried)
{
    const QByteArray path = file("row");
    const RemovalResult removed = remove({item(path)}, DeletionMethod::Trash);
    files.failure = [](const QByteArray &) {
        return FileResult{FileResult::Outcome::Failed, QStringLiteral("No space left")};
    };
    EXPECT_EQ(reasons(back(removed.receipt)), QList<Reason>{Reason::Failed});
    EXPECT_TRUE(elevation.commands.isEmpty());
    files.failure = {};
    const RemovalResult gone = remove({item(file("gone"))}, DeletionMethod::Permanent);
    ASSERT_EQ(gone.removedCount, 1);
    const PutBackResult result = back(gone.receipt);
    EXPECT_TRUE(result.restored.isEmpty());
    EXPECT_TRUE(result.left.isEmpty());
}

} // namespace quillbay
