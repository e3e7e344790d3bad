#include "uninstaller/PackageAdapter.h"
#include "uninstaller/flow/FlowFixture.h"

namespace quillbay::testing {

namespace {

using platform::RemovalOutcome;
using platform::RemovalPreview;
using ::testing::IsEmpty;

class FlowPackage : public FlowTest
{
protected:
    static QString message(const char *reason)
    {
        return QStringLiteral("acme, Debian package: ") + QString::fromUtf8(reason);
    }
    bool isInstalled() const { return !packages->installed.isEmpty(); }
    /// The newest record of the package.
    RemovalRecord record() const
    {
        RemovalRecord found;
        for (const RemovalRecord &one : receipts()) {
            if (one.displayName == QStringLiteral("acme, Debian package"))
                found = one;
        }
        return found;
    }
};

TEST_F(FlowPackage, GoesByItsManagerOnceItWasApproved)
{
    for (const bool isTrash : {true, false}) {
        const platform::Package package = ownApplication({QStringLiteral("acme-data")});
        tree.file("~/Library/Preferences/acme.plist");
        packages->removals.clear();
        review();
        EXPECT_TRUE(flow->rows()->index(0).data(ResidualRowsModel::IsPackageRole).toBool());
        EXPECT_TRUE(flow->rows()->index(0).data(ResidualRowsModel::IsSelectedRole).toBool());
        if (isTrash)
            flow->moveToTrash();
        else
            flow->deletePermanently();
        ASSERT_TRUE(waitForQuestion());
        EXPECT_EQ(flow->packageText(), QStringLiteral("acme, Debian package"));
        EXPECT_EQ(flow->packagesToRemove(),
                  QStringList({QStringLiteral("acme"), QStringLiteral("acme-data")}));
        EXPECT_TRUE(flow->packageTrashNote().contains(QStringLiteral("Trash")));
        EXPECT_THAT(packages->removals, IsEmpty());
        EXPECT_TRUE(exists(preferences)) << "the order of the list holds";

        flow->approve();
        flow->approve();
        EXPECT_FALSE(flow->hasPackageQuestion());
        ASSERT_TRUE(settle());
        ASSERT_EQ(packages->removals.size(), 1);
        EXPECT_EQ(packages->removals[0].package, package);
        EXPECT_EQ(packages->removals[0].approved,
                  QStringList({QStringLiteral("acme"), QStringLiteral("acme-data")}));
        EXPECT_EQ(packages->removals[0].data, platform::PackageData::Keep);
        EXPECT_EQ(flow->stage(), Stage::Done);
        EXPECT_EQ(flow->removedCount(), isTrash ? 4 : 2);
        EXPECT_EQ(flow->itemCount(), 0);
        EXPECT_TRUE(exists(appFolder + "/run")) << "no file of a package goes by its path";
        EXPECT_EQ(flow->canPutBack(), isTrash) << "the files, not the package";
        EXPECT_EQ(receipts().size(), isTrash ? 4 : 6);
        EXPECT_TRUE(record().when.isValid());
        EXPECT_EQ(record().method, DeletionMethod::Permanent);
    }
}

TEST_F(FlowPackage, PuttingBackIsOfTheFilesAlone)
{
    ownApplication();
    review();
    flow->moveToTrash();
    ASSERT_TRUE(waitForQuestion());
    flow->approve();
    ASSERT_TRUE(settle());
    ASSERT_TRUE(flow->canPutBack());
    flow->putBack();
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->putBackText(), QStringLiteral("3 items were put back."));
    EXPECT_FALSE(flow->canPutBack());
    EXPECT_FALSE(isInstalled());
    EXPECT_TRUE(exists(preferences) && exists(cache) && exists(log));
}

TEST_F(FlowPackage, StaysWhenItIsDeclined)
{
    ownApplication();
    review();
    flow->deletePermanently();
    ASSERT_TRUE(waitForQuestion());
    flow->decline();
    ASSERT_TRUE(settle());
    EXPECT_TRUE(isInstalled());
    EXPECT_THAT(packages->removals, IsEmpty());
    EXPECT_EQ(flow->stage(), Stage::Done);
    EXPECT_EQ(flow->removedCount(), 3) << "the rest went";
    EXPECT_EQ(flow->errors(), QStringList(message("Its removal was declined.")));
    EXPECT_EQ(flow->itemCount(), 1);

    review();
    flow->deselectAll();
    flow->selectAllIn(QStringLiteral("Application"));
    flow->moveToTrash();
    ASSERT_TRUE(waitForQuestion());
    flow->decline();
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->permissionErrorMessage(), message("Its removal was declined."));
    EXPECT_EQ(flow->stage(), Stage::Review);
}

TEST_F(FlowPackage, NobodyIsAskedAboutWhatCannotBeSimulatedOrIsRefused)
{
    for (const auto verdict : {RemovalPreview::Verdict::Refused, RemovalPreview::Verdict::Unknown}) {
        ownApplication();
        review();
        preview().verdict = verdict;
        preview().reason = QStringLiteral("the system needs it");
        flow->deselectAll();
        flow->selectAllIn(QStringLiteral("Application"));
        const QSignalSpy questions(flow.get(), &UninstallerFlow::packageQuestionChanged);
        removeToTrash();
        EXPECT_EQ(questions.size(), 0);
        EXPECT_EQ(flow->permissionErrorMessage(), message("It cannot be removed: the system needs it."));
        EXPECT_THAT(packages->removals, IsEmpty());
    }
}

TEST_F(FlowPackage, SaysWhyItsManagerDidNotRemoveIt)
{
    struct Case
    {
        RemovalOutcome outcome;
        const char *said;
    };
    for (const Case &one :
         {Case{RemovalOutcome::Declined, "Administrator access was denied or cancelled."},
          Case{RemovalOutcome::NotAuthorised, "Administrator access was denied or cancelled."},
          Case{RemovalOutcome::Failed, "the database is locked"}}) {
        ownApplication();
        packages->answer = {one.outcome, QStringLiteral("the database is locked")};
        review();
        flow->deselectAll();
        flow->selectAllIn(QStringLiteral("Application"));
        flow->deletePermanently();
        ASSERT_TRUE(waitForQuestion());
        flow->approve();
        ASSERT_TRUE(settle());
        EXPECT_EQ(flow->permissionErrorMessage(), message(one.said));
        EXPECT_EQ(flow->itemCount(), 5);
    }
    packages->answer = {RemovalOutcome::Removed, {}};
    flow->deletePermanently();
    ASSERT_TRUE(waitForQuestion());
    preview().packages.append(QStringLiteral("more"));
    flow->approve();
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->permissionErrorMessage(),
              message("Other packages would be removed now than those that were approved."));
    EXPECT_TRUE(isInstalled());
    EXPECT_THAT(receipts(), IsEmpty());
}

TEST_F(FlowPackage, IsRemovedAsAdministratorWhereItsManagerNeedsThat)
{
    ownApplication();
    packages->elevatedCommand = {QStringLiteral("/usr/bin/tool"), QStringLiteral("acme")};
    QList<QStringList> commands;
    runElevated = [&](const QStringList &command) {
        commands.append(command);
        return platform::ElevatedResult{platform::ElevatedOutcome::Done, {}};
    };
    review();
    flow->deletePermanently();
    ASSERT_TRUE(waitForQuestion());
    flow->approve();
    ASSERT_TRUE(settle());
    EXPECT_EQ(commands, QList<QStringList>{packages->elevatedCommand});
    EXPECT_EQ(flow->removedCount(), 4);
    EXPECT_TRUE(record().isElevated);
}

TEST_F(FlowPackage, OfWhichNothingIsKnownStaysAndNeverGoesByItsPath)
{
    packages->ownerErrors[appFolder] = QStringLiteral("the database is locked");
    review();
    EXPECT_EQ(flow->selectedCount(), 4);
    EXPECT_FALSE(flow->rows()->index(0).data(ResidualRowsModel::IsUserDeletableRole).toBool());
    flow->selectAll();
    removeForGood();
    EXPECT_EQ(flow->removedCount(), 3);
    EXPECT_EQ(flow->errors(),
              QStringList(QStringLiteral("Acme.app: It cannot be removed: it could not be found out which "
                                         "package it belongs to.")));
    EXPECT_TRUE(exists(appFolder + "/run"));
}

TEST_F(FlowPackage, FilesOfPackagesAreNoRows)
{
    const QByteArray shared = tree.file("/Library/Preferences/acme.conf");
    const QByteArray unclear = tree.file("/Library/Preferences/acme.other");
    const QByteArray own = tree.file("/Library/Preferences/acme.own");
    packages->install(shared, QStringLiteral("acme"));
    packages->ownerErrors[unclear] = QStringLiteral("the database is locked");
    review();
    EXPECT_EQ(flow->category(QStringLiteral("Preferences")).count, 2);
    removeForGood();
    EXPECT_TRUE(exists(shared) && exists(unclear));
    EXPECT_FALSE(exists(own));
}

TEST_F(FlowPackage, AFlowThatGoesWithItsQuestionOpenRemovesNothing)
{
    ownApplication();
    const auto before = homeContent();
    review();
    flow->deletePermanently();
    ASSERT_TRUE(waitForQuestion());
    flow.reset();
    uninstaller.reset();
    EXPECT_EQ(homeContent(), before);
    EXPECT_TRUE(isInstalled());
    EXPECT_THAT(receipts(), IsEmpty());

    // Nor does one that goes before its question arrives.
    review();
    flow->deletePermanently();
    flow.reset();
    uninstaller.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(homeContent(), before);
    EXPECT_THAT(packages->removals, IsEmpty());
}

TEST_F(FlowPackage, TheNextFlowWaitsForWhatTheLastStillHasToFinish)
{
    elevation.isHeld = true;
    review();
    files.failure = [](const QByteArray &) {
        return platform::FileResult{platform::FileResult::Outcome::NotPermitted, {}};
    };
    flow->deletePermanently();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !elevation.commands.isEmpty(); }));
    flow = uninstaller->begin(app);
    ASSERT_TRUE(waitForStage(Stage::Review));
    files.failure = nullptr;
    flow->deletePermanently();
    QCoreApplication::processEvents();
    EXPECT_TRUE(flow->isBusy() && exists(preferences));
    elevation.answer({platform::ElevationResult::Outcome::Refused, {}});
    ASSERT_TRUE(settle());
    EXPECT_EQ(flow->removedCount(), 4);
}

} // namespace

} // namespace quillbay::testing
