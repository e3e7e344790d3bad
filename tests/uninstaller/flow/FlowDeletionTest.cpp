#include "uninstaller/Deletion.h"
#include "uninstaller/PackageAdapter.h"
#include "uninstaller/flow/FlowFixture.h"

#include <QSemaphore>

#include <filesystem>
#include <fstream>

namespace quillbay::testing {

namespace {

using platform::ElevationResult;
using platform::FileResult;

FileResult notPermitted(const QString &description)
{
    return {FileResult::Outcome::NotPermitted, description};
}

class FlowDeletion : public FlowTest
{
protected:
    QList<QByteArray> paths() const { return {appFolder, preferences, cache, log}; }

    void write(const QByteArray &path, const char *content) const
    {
        std::ofstream(path.toStdString()) << content;
    }
};

TEST_F(FlowDeletion, TakesWhatIsSelectedForGoodAndNothingElse)
{
    review();
    flow->toggle(rowId(QStringLiteral("acme.plist")));
    auto expected = homeContent();
    for (const QByteArray &gone : {appFolder, cache, log})
        std::erase_if(expected, [&](const auto &one) { return one.first.starts_with(gone.toStdString()); });
    const QSignalSpy results(flow.get(), &UninstallerFlow::resultChanged);
    removeForGood();
    EXPECT_EQ(flow->stage(), Stage::Done);
    EXPECT_EQ(results.size(), 1);
    EXPECT_EQ(homeContent(), expected);
    EXPECT_EQ(flow->removedCount(), 3) << "the log counts once";
    EXPECT_EQ(flow->freedText(), QStringLiteral("5 KB"));
    EXPECT_EQ(flow->errorCount(), 0);
    EXPECT_EQ(flow->itemCount(), 1) << "both rows of the log are gone";
    EXPECT_EQ(flow->rows()->count(), 1);
    EXPECT_FALSE(flow->canPutBack()) << "nothing is in the Trash";
    flow->putBack();
    EXPECT_FALSE(flow->isBusy());
    flow->selectAll();
    flow->deletePermanently();
    EXPECT_FALSE(flow->isBusy()) << "there is no way back from the result";
    EXPECT_EQ(receipts().size(), 3);
}

TEST_F(FlowDeletion, PutsBackWhatWentToTheTrash)
{
    review();
    const auto before = homeContent();
    removeToTrash();
    ASSERT_EQ(flow->stage(), Stage::Done);
    EXPECT_EQ(flow->removedCount(), 4);
    for (const QByteArray &path : paths())
        EXPECT_FALSE(exists(path)) << path.constData();
    EXPECT_EQ(receipts().size(), 4);
    EXPECT_EQ(flow->putBackText(), QString());
    ASSERT_TRUE(flow->canPutBack());

    write(preferences, "new");
    flow->putBack();
    EXPECT_FALSE(flow->canPutBack());
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->putBackText(), QStringLiteral("3 items were put back.\n1 item(s) could not be put back:\n"
                                                  "acme.plist: Something else is in its place now."));
    EXPECT_TRUE(flow->canPutBack()) << "it can be tried again";
    EXPECT_EQ(flow->removedCount(), 4) << "what was told stays";

    std::filesystem::remove(preferences.toStdString());
    flow->putBack();
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->putBackText(), QStringLiteral("1 item was put back."));
    EXPECT_FALSE(flow->canPutBack());
    EXPECT_EQ(homeContent(), before);
}

TEST_F(FlowDeletion, WhatLeftTheTrashIsNotOfferedAgain)
{
    review();
    flow->deselectAll();
    flow->toggle(rowId(QStringLiteral("acme.plist")));
    removeToTrash();
    ASSERT_TRUE(flow->canPutBack());
    std::filesystem::remove_all((qgetenv("XDG_DATA_HOME") + "/Trash").toStdString());
    flow->putBack();
    ASSERT_TRUE(settle());
    EXPECT_TRUE(flow->putBackText().contains(QStringLiteral("It is no longer in the Trash.")));
    EXPECT_FALSE(flow->canPutBack());
}

TEST_F(FlowDeletion, SaysWhyNothingWasRemoved)
{
    review();
    trash.failure = [&](const QByteArray &path) {
        return notPermitted(path == cache ? QStringLiteral("Busy") : QStringLiteral("No permission here"));
    };
    const auto before = homeContent();
    const QSignalSpy alerts(flow.get(), &UninstallerFlow::permissionErrorChanged);
    removeToTrash();
    EXPECT_EQ(alerts.size(), 1);
    EXPECT_TRUE(flow->showPermissionError());
    EXPECT_EQ(flow->permissionErrorMessage(),
              QStringLiteral("Acme.app: No permission here\nacme.plist: No permission here\nacme: Busy"));
    EXPECT_EQ(flow->stage(), Stage::Review);
    EXPECT_EQ(flow->itemCount(), 5);
    EXPECT_EQ(homeContent(), before) << "a failing Trash deletes nothing";
    EXPECT_EQ(elevation.commands.size(), 5) << "each row was asked for by itself";
    flow->dismissPermissionError();
    EXPECT_FALSE(flow->showPermissionError());

    flow->deselectAllIn(QStringLiteral("Caches"));
    removeToTrash();
    EXPECT_TRUE(flow->permissionErrorMessage().startsWith(QStringLiteral(
        "All selected files are owned by the system or require administrator access to delete.")));

    for (const QByteArray &path : paths())
        std::filesystem::remove_all(path.toStdString());
    flow->selectAll();
    removeToTrash();
    EXPECT_EQ(flow->permissionErrorMessage(),
              QStringLiteral("No items were selected or all selected files were already deleted."));
    EXPECT_EQ(flow->stage(), Stage::Review);
    EXPECT_THAT(receipts(), ::testing::IsEmpty());
}

TEST_F(FlowDeletion, OneRemovedIsAResultWithTheOthersAsErrors)
{
    for (const char *name : {"acme.a", "acme.b", "acme.c"})
        tree.file(QByteArray("~/Library/Preferences/") + name);
    review();
    files.failure = [&](const QByteArray &path) -> std::optional<FileResult> {
        if (path.contains("/Preferences/"))
            return notPermitted(QStringLiteral("Denied"));
        return std::nullopt;
    };
    removeForGood();
    EXPECT_EQ(flow->stage(), Stage::Done);
    EXPECT_EQ(flow->removedCount(), 3);
    EXPECT_EQ(flow->errorCount(), 4);
    EXPECT_EQ(flow->errors().size(), 3) << "the screen has room for three";
    EXPECT_EQ(flow->itemCount(), 4) << "what stays keeps its rows";
    EXPECT_FALSE(flow->showPermissionError());
    EXPECT_TRUE(exists(preferences));
}

TEST_F(FlowDeletion, LeavesAloneWhatIsNotWhatWasScanned)
{
    review();
    write(preferences + ".new", "another");
    std::filesystem::rename((preferences + ".new").toStdString(), preferences.toStdString());
    tree.roots->mounts = QList<QByteArray>{"/", cache + "/mounted"};
    removeForGood();
    EXPECT_EQ(flow->removedCount(), 2);
    EXPECT_EQ(flow->errors(),
              QStringList({QStringLiteral("acme.plist: It has changed since the scan and was left alone."),
                           QStringLiteral("acme: This folder is protected and was left alone.")}));
    EXPECT_TRUE(exists(preferences) && exists(cache + "/x"));

    // A row of nothing, at whose path there is something now.
    AppResidualFile row;
    row.path = preferences;
    row.displayName = QStringLiteral("row");
    row.isUserDeletable = true;
    const UninstallerServices services{tree.roots, {}, {}, files, trash, admin, access, QString()};
    const DeletionResult result =
        deleteRows({row}, DeletionMethod::Permanent, services, PackageAdapter(nullptr), {}, {});
    EXPECT_EQ(result.errors,
              QStringList(QStringLiteral("row: It has changed since the scan and was left alone.")));
    EXPECT_TRUE(exists(preferences));
}

TEST_F(FlowDeletion, ASecondPressIsIgnored)
{
    elevation.isHeld = true;
    review();
    files.failure = [&](const QByteArray &) { return notPermitted(QStringLiteral("Denied")); };
    flow->deselectAll();
    flow->toggle(rowId(QStringLiteral("acme.plist")));
    flow->deletePermanently();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !elevation.commands.isEmpty(); }));
    EXPECT_EQ(flow->stage(), Stage::Review);
    flow->selectAll();
    flow->moveToTrash();
    flow->deletePermanently();
    flow->putBack();
    elevation.answer({ElevationResult::Outcome::Refused, {}});
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->permissionErrorMessage(), QStringLiteral("acme.plist: Denied"));
    EXPECT_EQ(elevation.commands.size(), 1);
    EXPECT_TRUE(exists(appFolder) && exists(preferences));
}

// The sheet is closed while the nth item is being removed: that one is finished, the next is not begun, and
// the receipt says so.
TEST_F(FlowDeletion, MayGoAtAnyItem)
{
    for (int at = 1; at <= 4; ++at) {
        std::filesystem::remove_all((tree.root + "/receipts").toStdString());
        tree.file("~/Applications/Acme.app/run");
        tree.file("~/Library/Preferences/acme.plist");
        tree.file("~/Library/Caches/acme/x");
        tree.file("~/Library/Logs/acme.log");
        review();
        QSemaphore reached;
        QSemaphore goOn;
        int calls = 0;
        files.failure = [&](const QByteArray &) -> std::optional<FileResult> {
            if (++calls == at) {
                reached.release();
                goOn.acquire();
            }
            return std::nullopt;
        };
        flow->deletePermanently();
        ASSERT_TRUE(QTest::qWaitFor([&] { return reached.tryAcquire(); }));
        flow.reset();
        goOn.release();
        uninstaller.reset();
        QCoreApplication::processEvents();
        QList<QByteArray> recorded;
        for (const RemovalRecord &record : receipts())
            recorded.append(record.path);
        EXPECT_EQ(recorded, paths().mid(0, at));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(exists(paths()[i]), i >= at) << paths()[i].constData();
    }
}

TEST_F(FlowDeletion, MayGoWhileThePersonIsAskedForAPassword)
{
    elevation.isHeld = true;
    review();
    files.failure = [&](const QByteArray &) { return notPermitted(QStringLiteral("Denied")); };
    flow->deletePermanently();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !elevation.commands.isEmpty(); }));
    flow.reset();
    std::filesystem::remove_all(appFolder.toStdString());
    elevation.answer({ElevationResult::Outcome::Done, {}});
    uninstaller.reset();
    ASSERT_EQ(receipts().size(), 1);
    EXPECT_EQ(receipts()[0].path, appFolder);
    EXPECT_TRUE(receipts()[0].isElevated);
    EXPECT_EQ(elevation.commands.size(), 1);
    EXPECT_TRUE(exists(preferences) && exists(cache) && exists(log));
}

} // namespace

} // namespace quillbay::testing
