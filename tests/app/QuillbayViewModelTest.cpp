#include "app/QuillbayViewModel.h"

#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationSource;
using quillbay::testing::FakePlatform;
using quillbay::testing::TestLibrary;

namespace {

platform::InstalledApplication app(const char *name)
{
    return FakeApplicationSource::application(QLatin1String("/apps/") + QLatin1String(name),
                                              QString::fromUtf8(name));
}

class QuillbayViewModelTest : public ::testing::Test
{
protected:
    QuillbayViewModelTest()
    {
        fakes.applications->setApplications({app("Mail"), app("Maps"), app("Files"), app("Firefox")});
        model = std::make_unique<QuillbayViewModel>(finder, *fakes.launcher);
        QSignalSpy finished(&finder, &AppFinder::scanFinished);
        EXPECT_TRUE(finished.wait());
    }

    QString shown() const
    {
        QStringList names;
        for (const AppItem &item : model->filteredApps()->items())
            names.append(item.name);
        return names.join(QLatin1Char(' '));
    }
    bool rescan() { return library.scan(); }

    TestLibrary library;
    FakePlatform &fakes = library.fakes;
    AppFinder &finder = *library.finder;
    std::unique_ptr<QuillbayViewModel> model;
};

} // namespace

TEST_F(QuillbayViewModelTest, ShowsTheLibraryWithoutFurtherEvents)
{
    EXPECT_EQ(shown(), QStringLiteral("Files Firefox Mail Maps"));
    EXPECT_EQ(fakes.folderWatch->watchCount, 2);

    fakes.applications->setApplications({app("Mail"), app("Notes")});
    ASSERT_TRUE(rescan());
    EXPECT_EQ(shown(), QStringLiteral("Mail Notes"));
}

TEST_F(QuillbayViewModelTest, FiltersWithEachWriteOfTheQuery)
{
    const QAbstractItemModelTester tester(model->filteredApps(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy changed(model.get(), &QuillbayViewModel::searchQueryChanged);
    const std::pair<const char *, const char *> keys[] = {
        {"F", "Files Firefox"}, {"FI", "Files Firefox"}, {"fiR", "Firefox"},
        {"firx", ""},           {"ma", "Mail Maps"},     {"", "Files Firefox Mail Maps"}};
    for (const auto &[query, expected] : keys) {
        model->setSearchQuery(QString::fromLatin1(query));
        EXPECT_EQ(shown(), QString::fromLatin1(expected)) << query;
    }
    EXPECT_EQ(changed.count(), 6);
}

TEST_F(QuillbayViewModelTest, KeepsTheQueryOverARescanAndAssignsNothingForAnEqualResult)
{
    model->setSearchQuery(QStringLiteral("ma"));
    QSignalSpy inserted(model->filteredApps(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(model->filteredApps(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy data(model->filteredApps(), &QAbstractItemModel::dataChanged);
    fakes.applications->setApplications({app("Mail"), app("Maps"), app("Zoom")});
    ASSERT_TRUE(rescan());
    EXPECT_EQ(inserted.count() + removed.count() + data.count(), 0);

    auto renamed = app("Maps");
    renamed.name = QStringLiteral("Map Room");
    fakes.applications->setApplications({app("Mail"), renamed});
    ASSERT_TRUE(rescan());
    EXPECT_EQ(data.count(), 1);
    EXPECT_EQ(shown(), QStringLiteral("Mail Map Room"));
}

TEST_F(QuillbayViewModelTest, LaunchesWhatItListsAndNothingElse)
{
    fakes.launcher->result = {platform::LaunchOutcome::NotFound, QStringLiteral("gone")};
    model->launchApp(QStringLiteral("/apps/Maps"));
    model->launchApp(QStringLiteral("/apps/Elsewhere"));
    model->launchApp(QStringLiteral("/apps/Maps"));
    EXPECT_EQ(fakes.launcher->paths(),
              (QStringList{QStringLiteral("/apps/Maps"), QStringLiteral("/apps/Maps")}));
}

TEST_F(QuillbayViewModelTest, PassesTheLibrarysAnnouncementsOn)
{
    QSignalSpy announced(model.get(), &ObservableObject::objectWillChange);
    Q_EMIT finder.objectWillChange();
    EXPECT_EQ(announced.count(), 1);
}
