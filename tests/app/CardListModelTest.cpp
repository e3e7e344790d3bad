#include "app/ExpandedCard.h"
#include "app/FolderContents.h"
#include "app/HiddenCards.h"
#include "app/QuillbayViewModel.h"
#include "app/UnifiedCards.h"
#include "foundation/Uuid.h"
#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

class CardListModelTest : public ::testing::Test
{
protected:
    CardListModelTest()
    {
        EXPECT_TRUE(library.install(
            {QStringLiteral("Ada:Office"), QStringLiteral("Bix:Games"), QStringLiteral("Cut:Office")}));
        library.finder->setAllAppsSortOption(AppSortOption::category);
        QSignalSpy scanned(library.finder.get(), &AppFinder::scanFinished);
        viewModel = std::make_unique<QuillbayViewModel>(*library.finder, *library.fakes.launcher,
                                                        *library.fakes.biometrics, library.preferences);
        EXPECT_TRUE(scanned.wait());
        contents = std::make_unique<FolderContents>(*viewModel);
        cards = std::make_unique<UnifiedCards>(*viewModel, *contents);
        hidden = std::make_unique<HiddenCards>(*viewModel, *contents);
        testers.push_back(std::make_unique<QAbstractItemModelTester>(cards.get(), fatal));
        testers.push_back(std::make_unique<QAbstractItemModelTester>(hidden.get(), fatal));
    }

    void make(const char *folder) { library.finder->createFolder(QString::fromLatin1(folder), {}, {}); }
    AppFolder folder(const char *name) const { return library.folder(QString::fromLatin1(name)); }
    AppListModel *contentOf(const char *name) const { return contents->apps(uuidString(folder(name).id)); }
    void file(const char *app, const char *into)
    {
        library.finder->addAppToFolder(library.app(QString::fromLatin1(app)), folder(into));
    }
    void reorder(int from, int to)
    {
        library.finder->reorderUnifiedItems({from}, to, viewModel->unifiedGridItems()->items());
    }

    /// "kind:name(applications)" of each card.
    static QString shown(const CardListModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.count(); ++row) {
            const QModelIndex index = model.index(row);
            const auto *apps = index.data(CardListModel::AppsRole).value<AppListModel *>();
            list.append(index.data(CardListModel::KindRole).toString() + QLatin1Char(':') +
                        index.data(CardListModel::NameRole).toString() + QLatin1Char('(') +
                        (apps ? names(apps->items()) : QString()) + QLatin1Char(')'));
        }
        return list.join(QLatin1Char(' '));
    }
    static bool becomes(const CardListModel &model, const char *text)
    {
        return QTest::qWaitFor([&] { return shown(model) == QString::fromLatin1(text); });
    }

    static constexpr auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
    TestLibrary library;
    std::unique_ptr<QuillbayViewModel> viewModel;
    std::unique_ptr<FolderContents> contents;
    std::unique_ptr<UnifiedCards> cards;
    std::unique_ptr<HiddenCards> hidden;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
};

TEST_F(CardListModelTest, ListsWhatHasSomethingToShow)
{
    EXPECT_TRUE(becomes(*cards, "add:() category:Office(Ada Cut) category:Games(Bix)"));
    make("Mine");
    file("Cut", "Mine");
    EXPECT_TRUE(becomes(*cards, "add:() folder:Mine(Cut) category:Office(Ada Cut) category:Games(Bix)"));

    library.finder->hideApp(library.app(QStringLiteral("Bix")));
    EXPECT_TRUE(becomes(*cards, "add:() folder:Mine(Cut) category:Office(Ada Cut)"))
        << shown(*cards).toStdString();
    library.finder->unhideApp(library.app(QStringLiteral("Bix")));
    library.finder->hideFolder(folder("Mine"));
    EXPECT_TRUE(becomes(*hidden, "folder:Mine(Cut)"));
    EXPECT_TRUE(becomes(*cards, "add:() category:Office(Ada Cut) category:Games(Bix)"));
}

TEST_F(CardListModelTest, CardsStayThroughOrderAndNames)
{
    make("Mine");
    ASSERT_TRUE(becomes(*cards, "add:() folder:Mine() category:Office(Ada Cut) category:Games(Bix)"));
    const QSignalSpy removed(cards.get(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy moved(cards.get(), &QAbstractItemModel::rowsMoved);
    const QSignalSpy changed(cards.get(), &QAbstractItemModel::dataChanged);
    reorder(0, 3);
    library.finder->renameFolder(folder("Mine"), QStringLiteral("Yours"));
    EXPECT_TRUE(becomes(*cards, "add:() category:Office(Ada Cut) category:Games(Bix) folder:Yours()"));
    EXPECT_EQ(removed.count(), 0);
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(CardListModelTest, CardsOfAnotherWorkspaceTakeTheirPlaces)
{
    make("Mine");
    make("Yours");
    library.workspaces->createWorkspace(QStringLiteral("Second"), {}, {});
    const QUuid first = library.workspaces->workspaces().first().id;
    library.workspaces->setActiveWorkspaceID(library.workspaces->workspaces().last().id);
    make("Other");
    ASSERT_TRUE(becomes(*cards, "add:() folder:Other() category:Office(Ada Cut) category:Games(Bix)"));
    const QSignalSpy removed(cards.get(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(cards.get(), &QAbstractItemModel::rowsInserted);
    library.workspaces->setActiveWorkspaceID(first);
    ASSERT_TRUE(QTest::qWaitFor([&] { return cards->count() == 5; })) << shown(*cards).toStdString();
    EXPECT_EQ(removed.count(), 0);
    ASSERT_EQ(inserted.count(), 1) << "one more than there were";
    EXPECT_EQ(inserted.first().at(1).toInt(), inserted.first().at(2).toInt());
}

TEST_F(CardListModelTest, AnExpandedCardIsShownWhileThereIsSomethingToShow)
{
    make("Mine");
    ExpandedCard expanded(*viewModel, *contents);
    expanded.expandCategory(QStringLiteral("Games"));
    EXPECT_EQ(expanded.title(), QStringLiteral("Games"));
    library.finder->hideApp(library.app(QStringLiteral("Bix")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !expanded.isExpanded(); }));
    library.finder->unhideApp(library.app(QStringLiteral("Bix")));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return expanded.isExpanded() && expanded.title() == QStringLiteral("Games"); }));

    library.finder->addAppToFolder(library.app(QStringLiteral("Ada")), folder("Mine"));
    expanded.expandFolder(uuidString(folder("Mine").id));
    EXPECT_EQ(expanded.title(), QStringLiteral("Mine")) << "the folder comes first";
    library.finder->addAppToFolder(library.app(QStringLiteral("Cut")), folder("Mine"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return expanded.apps()->count() == 2; }));
    viewModel->deleteFolder(folder("Mine"));
    EXPECT_EQ(expanded.title(), QStringLiteral("Games"));
    EXPECT_EQ(expanded.apps()->count(), 1);
    expanded.close();
    EXPECT_FALSE(expanded.isExpanded());
}

TEST_F(CardListModelTest, FollowsOnlyWhileItIsShown)
{
    ASSERT_TRUE(cards->isShown());
    const QSignalSpy grouped(viewModel->groupedAppsByCategory(), &QAbstractItemModel::rowsRemoved);
    const QString before = shown(*cards);
    viewModel->setSearchQuery(QStringLiteral("Bix"));
    EXPECT_FALSE(cards->isShown());
    make("Mine");
    QCoreApplication::processEvents();
    EXPECT_EQ(shown(*cards), before);
    EXPECT_EQ(grouped.count(), 0) << "typing groups what no card shows";

    viewModel->setSearchQuery({});
    EXPECT_TRUE(becomes(*cards, "add:() folder:Mine() category:Office(Ada Cut) category:Games(Bix)"));
    EXPECT_TRUE(cards->isShown());
    for (const auto &leave : std::vector<std::function<void()>>{
             [&] { viewModel->setSelection(SidebarSelection(SidebarSelection::Case::recents)); },
             [&] { library.finder->setAllAppsSortOption(AppSortOption::nameAscending); }}) {
        leave();
        EXPECT_FALSE(cards->isShown());
        viewModel->setSelection(SidebarSelection());
        QCoreApplication::processEvents();
    }
    EXPECT_FALSE(cards->isShown());
}

TEST_F(CardListModelTest, AFoldersContentFollowsUntilTheFolderGoes)
{
    EXPECT_EQ(contents->apps(QStringLiteral("none")), nullptr);
    make("Mine");
    file("Ada", "Mine");
    const QPointer<AppListModel> apps = contentOf("Mine");
    ASSERT_TRUE(apps);
    file("Bix", "Mine");
    ASSERT_TRUE(QTest::qWaitFor([&] { return names(apps->items()) == QStringLiteral("Ada Bix"); }));
    ASSERT_TRUE(library.install({QStringLiteral("Bix:Games")}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return names(apps->items()) == QStringLiteral("Bix"); }));
    EXPECT_EQ(contentOf("Mine"), apps);
    viewModel->deleteFolder(folder("Mine"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !apps; }));
}

} // namespace
