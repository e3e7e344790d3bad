#include "app/QuillbayViewModel.h"

#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationSource;
using quillbay::testing::FakePlatform;
using quillbay::testing::names;
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
        model = std::make_unique<QuillbayViewModel>(finder, *fakes.launcher, *fakes.biometrics,
                                                    library.preferences);
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

TEST_F(QuillbayViewModelTest, LaunchesWhatIsInstalledAndCountsAFailureToo)
{
    QSignalSpy events(model.get(), &QuillbayViewModel::eventHappened);
    fakes.launcher->result = {platform::LaunchOutcome::NotFound, QStringLiteral("gone")};
    model->setSelection(SidebarSelection(SidebarSelection::Case::recents));
    EXPECT_EQ(shown(), QString());
    model->launchApp(QStringLiteral("/apps/Maps"));
    model->launchApp(QStringLiteral("/apps/Elsewhere"));
    model->launchApp(library.app(QStringLiteral("Files")));
    EXPECT_EQ(fakes.launcher->paths(),
              (QStringList{QStringLiteral("/apps/Maps"), QStringLiteral("/apps/Files")}));
    EXPECT_EQ(shown(), QStringLiteral("Files Maps"));
    ASSERT_EQ(events.count(), 2);
    EXPECT_EQ(events[0][0].toString(), QStringLiteral("App Launched"));
    EXPECT_EQ(events[1][1].toMap().value(QStringLiteral("app_name")).toString(), QStringLiteral("Files"));
}

TEST_F(QuillbayViewModelTest, PassesTheLibrarysAnnouncementsOn)
{
    QSignalSpy announced(model.get(), &ObservableObject::objectWillChange);
    Q_EMIT finder.objectWillChange();
    EXPECT_EQ(announced.count(), 1);
}

TEST_F(QuillbayViewModelTest, ShowsEachSelectionAfterEachOperation)
{
    using Case = SidebarSelection::Case;
    ASSERT_TRUE(library.install({QStringLiteral("Ada:Office"), QStringLiteral("Bix:Games"),
                                 QStringLiteral("Cut:Office"), QStringLiteral("Dot:Games")}));
    const auto app = [this](const char *name) { return library.app(QString::fromLatin1(name)); };

    model->setSelection(SidebarSelection(Case::favorites));
    finder.toggleFavorite(app("Cut"));
    finder.toggleFavorite(app("Ada"));
    EXPECT_EQ(shown(), QStringLiteral("Cut Ada"));
    const QStringList stored =
        library.preferences.stringArray(library.workspaces->key(QStringLiteral("favoriteApps"))).value();
    finder.hideApp(app("Ada"));
    EXPECT_EQ(shown(), QStringLiteral("Cut"));
    EXPECT_EQ(library.preferences.stringArray(library.workspaces->key(QStringLiteral("favoriteApps"))),
              stored);

    model->setSelection(SidebarSelection::ofCategory(QStringLiteral("Office")));
    EXPECT_EQ(shown(), QStringLiteral("Cut"));
    model->setSearchQuery(QStringLiteral("b"));
    EXPECT_EQ(shown(), QStringLiteral("Bix"));
    model->setSelection(SidebarSelection(Case::hidden));
    EXPECT_EQ(shown(), QString());
    model->setSearchQuery(QStringLiteral("a"));
    EXPECT_EQ(shown(), QStringLiteral("Ada"));
    model->setSearchQuery({});
    EXPECT_EQ(shown(), QStringLiteral("Ada"));
    finder.unhideApp(app("Ada"));
    EXPECT_EQ(shown(), QString());

    model->setSelection(std::nullopt);
    EXPECT_EQ(shown(), QStringLiteral("Ada Bix Cut Dot"));
    finder.setAllAppsSortOption(AppSortOption::nameDescending);
    EXPECT_EQ(shown(), QStringLiteral("Dot Cut Bix Ada"));
    finder.setAllAppsSortOption(AppSortOption::category);
    EXPECT_EQ(shown(), QStringLiteral("Bix Dot Ada Cut"));
    finder.setAllAppsSortOption(AppSortOption::recentlyUsed);
    model->launchApp(app("Dot"));
    EXPECT_EQ(shown(), QStringLiteral("Dot Ada Bix Cut"));

    finder.createFolder(QStringLiteral("Mine"), QStringLiteral("folder"), QStringLiteral("#007AFF"));
    model->setSelection(SidebarSelection::ofFolder(library.folder(QStringLiteral("Mine"))));
    for (const char *name : {"Dot", "Ada", "Bix"})
        model->addAppToFolder(app(name), library.folder(QStringLiteral("Mine")));
    EXPECT_EQ(shown(), QStringLiteral("Dot Ada Bix"));
    EXPECT_EQ(names(model->appsNotInFolder(library.folder(QStringLiteral("Mine")))), QStringLiteral("Cut"));
    // Dragged forward a tile lands before its target, dragged backward in its place.
    model->moveFolderApp(app("Dot"), app("Bix"), library.folder(QStringLiteral("Mine")));
    EXPECT_EQ(shown(), QStringLiteral("Ada Dot Bix"));
    model->moveFolderApp(app("Bix"), app("Ada"), library.folder(QStringLiteral("Mine")));
    EXPECT_EQ(shown(), QStringLiteral("Bix Ada Dot"));
    model->moveFolderApp(app("Bix"), app("Cut"), library.folder(QStringLiteral("Mine")));
    model->removeAppFromFolder(app("Ada"), library.folder(QStringLiteral("Mine")));
    EXPECT_EQ(shown(), QStringLiteral("Bix Dot"));

    library.workspaces->createWorkspace(QStringLiteral("Second"), {}, {});
    EXPECT_EQ(shown(), QString());
    library.workspaces->setActiveWorkspaceID(library.workspaces->workspaces().first().id);
    EXPECT_EQ(shown(), QStringLiteral("Bix Dot"));
    model->deleteFolder(library.folder(QStringLiteral("Mine")));
    ASSERT_TRUE(model->selection());
    EXPECT_EQ(model->selection()->which(), Case::allApps);
    EXPECT_EQ(shown(), QStringLiteral("Dot Ada Bix Cut"));
}

TEST_F(QuillbayViewModelTest, GroupsWhatItListsAndKeepsTheModelsOfCategoriesThatStay)
{
    ASSERT_TRUE(library.install(
        {QStringLiteral("Ada:Office"), QStringLiteral("Bix:Games"), QStringLiteral("Cut:Office")}));
    CategoryListModel &groups = *model->groupedAppsByCategory();
    const QAbstractItemModelTester tester(&groups, QAbstractItemModelTester::FailureReportingMode::Fatal);
    AppListModel *office = groups.group(QStringLiteral("Office"));
    ASSERT_TRUE(office);
    EXPECT_EQ(names(office->items()), QStringLiteral("Ada Cut"));
    model->setSearchQuery(QStringLiteral("u"));
    EXPECT_EQ(groups.group(QStringLiteral("Office")), office);
    EXPECT_EQ(names(office->items()), QStringLiteral("Cut"));
    EXPECT_EQ(groups.group(QStringLiteral("Games")), nullptr);
    ASSERT_EQ(groups.count(), 1);
    EXPECT_EQ(groups.index(0).data(CategoryListModel::NameRole).toString(), QStringLiteral("Office"));
    EXPECT_EQ(groups.index(0).data(CategoryListModel::AppsRole).value<AppListModel *>(), office);
}

TEST_F(QuillbayViewModelTest, TheUnifiedGridFollowsFoldersCategoriesAndTheirOrder)
{
    ASSERT_TRUE(library.install({QStringLiteral("Ada:Office")}));
    GridListModel &grid = *model->unifiedGridItems();
    const QAbstractItemModelTester tester(&grid, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto cells = [&] {
        QStringList list;
        for (const GridItemIdentifier &cell : grid.items()) {
            if (cell.tag() == GridItemIdentifier::Tag::Category)
                list.append(cell.categoryName());
            for (const AppFolder &folder : finder.folders()) {
                if (folder.id == cell.folderID())
                    list.append(folder.name);
            }
        }
        return list.join(QLatin1Char(' '));
    };
    EXPECT_EQ(cells(), QStringLiteral("Office"));
    finder.createFolder(QStringLiteral("One"), {}, {});
    EXPECT_EQ(cells(), QStringLiteral("One Office"));
    finder.reorderUnifiedItems({0}, 2, grid.items());
    EXPECT_EQ(cells(), QStringLiteral("Office One"));
    finder.createFolder(QStringLiteral("Two"), {}, {});
    EXPECT_EQ(cells(), QStringLiteral("Two Office One"));
    finder.hideFolder(library.folder(QStringLiteral("One")));
    EXPECT_EQ(cells(), QStringLiteral("Two Office"));
    finder.unhideFolder(library.folder(QStringLiteral("One")));
    EXPECT_EQ(cells(), QStringLiteral("Two Office One"));
    model->deleteFolder(library.folder(QStringLiteral("Two")));
    EXPECT_EQ(cells(), QStringLiteral("Office One"));
    // A category whose applications are all hidden keeps its card.
    finder.hideApp(library.app(QStringLiteral("Ada")));
    EXPECT_EQ(cells(), QStringLiteral("Office One"));
}

TEST_F(QuillbayViewModelTest, TheFirstHideLeadsToTheHiddenListAndLeavingItLocksIt)
{
    using Case = SidebarSelection::Case;
    model->hideAppGlobally(library.app(QStringLiteral("Mail")));
    EXPECT_EQ(model->selection()->which(), Case::hidden);
    EXPECT_EQ(shown(), QStringLiteral("Mail"));
    library.preferences.setString(QStringLiteral("quillbay_hidden_password"), QStringLiteral("x"));
    EXPECT_TRUE(model->isSecurityPasswordSet());
    for (const std::optional<SidebarSelection> &next :
         {std::optional<SidebarSelection>(), std::optional(SidebarSelection(Case::allApps))}) {
        model->setIsHiddenUnlocked(true);
        model->setSelection(SidebarSelection(Case::hidden));
        EXPECT_TRUE(model->isHiddenUnlocked());
        model->setSelection(next);
        EXPECT_FALSE(model->isHiddenUnlocked());
    }
    model->hideAppGlobally(library.app(QStringLiteral("Maps")));
    EXPECT_EQ(model->selection()->which(), Case::allApps);
    EXPECT_EQ(shown(), QStringLiteral("Files Firefox"));
    library.preferences.setBoolean(QStringLiteral("quillbay_hidden_password"), true);
    EXPECT_FALSE(model->isSecurityPasswordSet());
}

TEST_F(QuillbayViewModelTest, ControlAndALetterGoRoundTheFoldersOfThatLetter)
{
    for (const char *name : {"Tools", "Scripts", "Sales"})
        finder.createFolder(QString::fromLatin1(name), {}, {});
    finder.createFolder(QStringLiteral("Sub"), {}, {}, library.folder(QStringLiteral("Sales")).id);
    QWindow window;
    const auto press = [&window](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        event.ignore();
        return QCoreApplication::sendEvent(&window, &event);
    };
    const auto selected = [this] { return model->selection()->title(); };
    const QStringList order{QStringLiteral("Tools"), QStringLiteral("Scripts"), QStringLiteral("Sales")};
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[1]);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[2]);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[1]);
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    press(Qt::Key_T, Qt::NoModifier);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[1]);
    finder.createFolder(QStringLiteral("Kept"), {}, {});
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[1]);
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(selected(), order[0]);
}

TEST_F(QuillbayViewModelTest, ASearchCountsOnceAfterASilence)
{
    QSignalSpy events(model.get(), &QuillbayViewModel::eventHappened);
    for (const char *query : {"m", "ma", "map"})
        model->setSearchQuery(QString::fromLatin1(query));
    ASSERT_TRUE(events.wait(2 * QuillbayViewModel::searchSilence));
    ASSERT_EQ(events.count(), 1);
    EXPECT_EQ(events[0][0].toString(), QStringLiteral("Search Used"));
    EXPECT_EQ(events[0][1].toMap().value(QStringLiteral("query")).toString(), QStringLiteral("map"));
    model->setSearchQuery({});
    EXPECT_FALSE(events.wait(QuillbayViewModel::searchSilence + 500));
}
