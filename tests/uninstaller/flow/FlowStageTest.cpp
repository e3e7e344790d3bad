#include "uninstaller/flow/FlowFixture.h"

#include <QPointer>

namespace quillbay::testing {

namespace {

class FlowStage : public FlowTest
{
protected:
    QTimer *timer() const
    {
        const auto timers = flow->findChildren<QTimer *>();
        EXPECT_EQ(timers.size(), 1);
        return timers.value(0);
    }
};

TEST_F(FlowStage, WithAccessTheGateNeverShows)
{
    begin();
    EXPECT_EQ(flow->stage(), Stage::Scanning);
    EXPECT_TRUE(flow->isScanning());
    EXPECT_FALSE(timer()->isActive());
    flow->moveToTrash();
    EXPECT_FALSE(flow->isBusy()) << "there is nothing to remove before the review";
    ASSERT_TRUE(waitForStage(Stage::Review));
    EXPECT_EQ(flow->scanProgress(), 1.0);
    EXPECT_EQ(flow->scanStageText(), QStringLiteral("Scan complete"));
    EXPECT_EQ(flow->itemCount(), 5);
    EXPECT_EQ(flow->appName(), QStringLiteral("Acme"));
    EXPECT_EQ(flow->appPath(), app.path);
    flow->openSystemSettings();
    EXPECT_EQ(access.openings, 0) << "the gate is behind";
}

TEST_F(FlowStage, TheGateLooksOnlyAfterTheSettingsWereOpened)
{
    access.isGranted = false;
    begin();
    EXPECT_EQ(flow->stage(), Stage::CheckingAccess);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(access.checks, 1);
    const QSignalSpy scans(flow.get(), &UninstallerFlow::isScanningChanged);
    const QSignalSpy stages(flow.get(), &UninstallerFlow::stageChanged);

    flow->openSystemSettings();
    flow->openSystemSettings();
    EXPECT_EQ(access.openings, 2);
    ASSERT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 2'000);
    EXPECT_FALSE(timer()->isSingleShot());
    timer()->setInterval(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return access.checks >= 4; }));
    EXPECT_EQ(flow->stage(), Stage::CheckingAccess);

    access.isGranted = true;
    ASSERT_TRUE(waitForStage(Stage::Review));
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(scans.size(), 2) << "one scan: it began and ended";
    EXPECT_EQ(stages.size(), 2);
}

TEST_F(FlowStage, AClosedGateLooksNoMore)
{
    access.isGranted = false;
    begin();
    flow->openSystemSettings();
    const QPointer<QTimer> poll = timer();
    poll->setInterval(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return access.checks > 2; }));
    flow.reset();
    EXPECT_TRUE(poll.isNull());
    const int before = access.checks;
    access.isGranted = true;
    QCoreApplication::processEvents();
    EXPECT_EQ(access.checks, before);
}

TEST_F(FlowStage, MayGoDuringAScan)
{
    tree.roots->gate.close();
    begin();
    ASSERT_TRUE(QTest::qWaitFor([&] { return flow->scanProgress() > 0; }));
    EXPECT_EQ(flow->stage(), Stage::Scanning);
    flow.reset();
    tree.roots->gate.open();
}

TEST_F(FlowStage, TheReviewIsInTheOrderOfItsCategoriesAndCounts)
{
    review();
    const ResidualRowsModel &rows = *flow->rows();
    std::vector<std::string> shown;
    for (int row = 0; row < rows.count(); ++row) {
        const QModelIndex index = rows.index(row);
        shown.push_back((index.data(ResidualRowsModel::CategoryRole).toString() + u' ' +
                         index.data(ResidualRowsModel::NameRole).toString() + u' ' +
                         index.data(ResidualRowsModel::SizeTextRole).toString())
                            .toStdString());
    }
    EXPECT_THAT(shown,
                ::testing::ElementsAre("Application Acme.app 1 KB", "Preferences acme.plist 600 bytes",
                                       "Caches acme 1 KB", "Logs acme.log 3 KB", "Logs acme.log 3 KB"));
    EXPECT_EQ(flow->selectedCount(), 5);
    EXPECT_EQ(flow->formattedTotalSize(), QStringLiteral("9 KB"));

    const int before = flow->revision();
    flow->toggle(rowId(QStringLiteral("acme.log")));
    EXPECT_GT(flow->revision(), before);
    ResidualCategorySummary logs = flow->category(QStringLiteral("Logs"));
    EXPECT_EQ(logs.countText, QStringLiteral("(2 items)"));
    EXPECT_EQ(logs.sizeText, QStringLiteral("6 KB")) << "of all rows, selected or not";
    EXPECT_FALSE(logs.isAllSelected);
    EXPECT_EQ(flow->category(QStringLiteral("Caches")).countText, QStringLiteral("(1 item)"));
    EXPECT_EQ(flow->category(QStringLiteral("Caches")).icon, QStringLiteral("internaldrive.fill"));
    EXPECT_EQ(flow->category(QStringLiteral("Caches")).accentColor, QStringLiteral("#FF9500"));
    EXPECT_EQ(flow->selectedCount(), 4);
    EXPECT_EQ(flow->formattedTotalSize(), QStringLiteral("6 KB")) << "only what is selected";
    flow->selectAllIn(QStringLiteral("Logs"));
    EXPECT_TRUE(flow->category(QStringLiteral("Logs")).isAllSelected);
    flow->deselectAllIn(QStringLiteral("Logs"));
    EXPECT_EQ(flow->selectedCount(), 3);
    flow->deselectAllIn(QStringLiteral("no such category"));
    EXPECT_EQ(flow->selectedCount(), 3);
    flow->deselectAll();
    EXPECT_EQ(flow->selectedCount(), 0);
    flow->toggle(QStringLiteral("no such row"));
    flow->selectAll();
    EXPECT_EQ(flow->selectedCount(), 5);
}

TEST_F(FlowStage, ALockedRowIgnoresClicksButNotSelectAll)
{
    ownApplication().canBeRemoved = false;
    review();
    const QString id = rowId(QStringLiteral("acme, Debian package"));
    EXPECT_EQ(flow->selectedCount(), 4);
    flow->toggle(id);
    EXPECT_EQ(flow->selectedCount(), 4);
    flow->selectAll();
    EXPECT_EQ(flow->selectedCount(), 5);
    flow->toggle(id);
    EXPECT_EQ(flow->selectedCount(), 5);
}

TEST_F(FlowStage, SystemApplicationsAreShownAndNothingOfThemIsRemoved)
{
    ownApplication();
    preview().verdict = platform::RemovalPreview::Verdict::Refused;
    review();
    EXPECT_TRUE(flow->isSystemApp());
    EXPECT_EQ(flow->itemCount(), 5);
    const auto before = homeContent();
    flow->selectAll();
    flow->moveToTrash();
    flow->deletePermanently();
    EXPECT_FALSE(flow->isBusy());
    EXPECT_EQ(homeContent(), before);
    EXPECT_THAT(packages->removals, ::testing::IsEmpty());
}

} // namespace

} // namespace quillbay::testing
