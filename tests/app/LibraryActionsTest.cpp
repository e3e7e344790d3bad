#include "app/LibraryActions.h"

#include "app/FolderTreeModel.h"
#include "app/QuillbayViewModel.h"
#include "app/SelectionKey.h"
#include "app/WorkspaceListModel.h"
#include "foundation/Uuid.h"
#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

class LibraryActionsTest : public ::testing::Test
{
protected:
    LibraryActionsTest()
    {
        EXPECT_TRUE(library.install(
            {QStringLiteral("Ada:Office"), QStringLiteral("Bix:Games"), QStringLiteral("Cut:Office")}));
        QSignalSpy scanned(library.finder.get(), &AppFinder::scanFinished);
        model = std::make_unique<QuillbayViewModel>(*library.finder, *library.fakes.launcher,
                                                    *library.fakes.biometrics, library.preferences);
        EXPECT_TRUE(scanned.wait());
        actions = std::make_unique<LibraryActions>(*model, *library.workspaces);
    }

    QString id(const char *folder) const
    {
        return uuidString(library.folder(QString::fromLatin1(folder)).id);
    }
    void make(const char *folder) { actions->createFolder(QString::fromLatin1(folder), {}, {}); }
    QString members(const char *folder) const
    {
        return names(library.finder->getAppsInFolder(library.folder(QString::fromLatin1(folder))));
    }

    TestLibrary library;
    std::unique_ptr<QuillbayViewModel> model;
    std::unique_ptr<LibraryActions> actions;
};

/// "name depth rootIndex" of each row.
QStringList tree(const FolderTreeModel &rows)
{
    QStringList list;
    for (int row = 0; row < rows.count(); ++row) {
        const auto text = [&](int role) { return rows.index(row).data(role).toString(); };
        list.append(QStringLiteral("%1 %2 %3")
                        .arg(text(FolderTreeModel::NameRole), text(FolderTreeModel::DepthRole),
                             text(FolderTreeModel::RootIndexRole)));
    }
    return list;
}

} // namespace

TEST_F(LibraryActionsTest, ASelectionIsNamedByItsKeyThereAndBack)
{
    make("Mine");
    QSignalSpy changed(actions.get(), &LibraryActions::selectionChanged);
    const QString folder = QLatin1String("folder:") + id("Mine");
    for (const QString &key :
         {QStringLiteral("newlyAdded"), QStringLiteral("recents"), QStringLiteral("favorites"),
          QStringLiteral("hidden"), QStringLiteral("category:a:b"), folder, QString(),
          QStringLiteral("allApps")}) {
        actions->setSelection(key);
        EXPECT_EQ(actions->selection(), key);
        EXPECT_EQ(actions->selectedFolder(), key == folder ? id("Mine") : QString());
    }
    EXPECT_EQ(changed.count(), 8);
    EXPECT_TRUE(actions->isAllApps());
    for (const char *key : {"folder:", "folder:D3B07384-D113-4E4E-A343-A33A0A26F3D3", "AllApps"}) {
        actions->setSelection(QString::fromLatin1(key));
        EXPECT_EQ(actions->selection(), QString()) << key;
        EXPECT_EQ(actions->title(), QStringLiteral("Apps"));
    }
}

TEST_F(LibraryActionsTest, TheSortMenuStoresWhatIsChosen)
{
    actions->setSortOption(QStringLiteral("Z to A"));
    actions->setSortOption(QStringLiteral("Sideways"));
    EXPECT_EQ(library.preferences.string(QStringLiteral("AllAppsSortOption")), QStringLiteral("Z to A"));
    EXPECT_EQ(names(model->filteredApps()->items()), QStringLiteral("Cut Bix Ada"));
    EXPECT_EQ(actions->sortOptions().join(QLatin1Char(',')),
              QStringLiteral("A to Z,Z to A,Category,Recently Used"));
}

TEST_F(LibraryActionsTest, ACategoryGoesIntoTheFolderThatStandsFirst)
{
    actions->createFolderFromCategory(QStringLiteral("Office"));
    EXPECT_EQ(members("Office"), QStringLiteral("Ada Cut"));
    actions->togglePinFolder(id("Office"));
    actions->createFolderFromCategory(QStringLiteral("Games"));
    EXPECT_EQ(members("Office"), QStringLiteral("Ada Cut Bix"));
    EXPECT_EQ(members("Games"), QString());
    actions->addCategoryToFolder(QStringLiteral("Games"), id("Games"));
    actions->addCategoryToFolder(QStringLiteral("Nothing"), id("Games"));
    EXPECT_EQ(members("Games"), QStringLiteral("Bix"));
}

TEST_F(LibraryActionsTest, FoldersAreEditedByTheirIdentifiers)
{
    make("One");
    const QString one = id("One");
    actions->editFolder(one, QStringLiteral("First"), QStringLiteral("star"), QStringLiteral("#FF0000"));
    EXPECT_EQ(actions->folder(one), (QVariantMap{{QStringLiteral("name"), QStringLiteral("First")},
                                                 {QStringLiteral("icon"), QStringLiteral("star")},
                                                 {QStringLiteral("color"), QStringLiteral("#FF0000")},
                                                 {QStringLiteral("isPinned"), false}}));
    actions->addAppToFolder(QStringLiteral("/apps/Bix"), one);
    actions->addAppToFolder(QStringLiteral("/apps/None"), one);
    actions->addAppToFolder(QStringLiteral("/apps/Ada"), QStringLiteral("no folder"));
    EXPECT_EQ(members("First"), QStringLiteral("Bix"));
    actions->removeAppFromFolder(QStringLiteral("/apps/Bix"), one);
    EXPECT_EQ(members("First"), QString());
    actions->setSelection(QLatin1String("folder:") + one);
    actions->deleteFolder(one);
    EXPECT_TRUE(actions->isAllApps());
    EXPECT_TRUE(actions->folder(one).isEmpty());

    actions->toggleFavorite(QStringLiteral("/apps/Ada"));
    EXPECT_TRUE(actions->isFavorite(QStringLiteral("/apps/Ada")));
    actions->hideApp(QStringLiteral("/apps/Ada"));
    EXPECT_EQ(actions->selection(), QStringLiteral("hidden"));
    actions->unhideApp(QStringLiteral("/apps/Ada"));
    EXPECT_TRUE(library.finder->hiddenAppPaths().isEmpty());
}

TEST_F(LibraryActionsTest, TheTreeShowsChildrenBelowTheirParentsAndFollows)
{
    FolderTreeModel rows(*library.finder);
    const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::Fatal);
    make("B");
    make("A");
    library.finder->createFolder(QStringLiteral("b1"), {}, {}, library.folder(QStringLiteral("B")).id);
    library.finder->createFolder(QStringLiteral("b2"), {}, {}, library.folder(QStringLiteral("b1")).id);
    EXPECT_EQ(tree(rows), (QStringList{QStringLiteral("B 0 0"), QStringLiteral("b1 1 -1"),
                                       QStringLiteral("b2 2 -1"), QStringLiteral("A 0 1")}));
    actions->moveRootFolder(1, 0);
    actions->renameFolder(id("b1"), QStringLiteral("c"));
    EXPECT_EQ(tree(rows), (QStringList{QStringLiteral("A 0 0"), QStringLiteral("B 0 1"),
                                       QStringLiteral("c 1 -1"), QStringLiteral("b2 2 -1")}));
    actions->hideFolder(id("B"));
    EXPECT_EQ(tree(rows), QStringList(QStringLiteral("A 0 0")));
    actions->unhideFolder(id("B"));
    actions->deleteFolder(id("c"));
    EXPECT_EQ(tree(rows), (QStringList{QStringLiteral("A 0 0"), QStringLiteral("B 0 1")}));
}

TEST_F(LibraryActionsTest, FoldersThatContainEachOtherEnd)
{
    AppFolder folder;
    folder.id = QUuid::createUuid();
    AppFolder child = folder;
    child.parentFolderID = folder.id;
    library.finder->setFolders({folder, child});
    EXPECT_EQ(folderRows(*library.finder).size(), 1);
}

TEST_F(LibraryActionsTest, TheSwitcherShowsTheActiveWorkspaceAndAChoiceGoesToAllApplications)
{
    WorkspaceListModel list(*library.workspaces);
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(list.shownName(), QStringLiteral("Default"));
    actions->createWorkspace(QStringLiteral("Work"), QStringLiteral("star"), QStringLiteral("#111111"));
    ASSERT_EQ(list.count(), 2);
    const auto at = [&list](int row, int role) { return list.index(row).data(role); };
    EXPECT_EQ(list.shownName() + list.shownIcon() + list.shownColor(), QStringLiteral("Workstar#111111"));
    EXPECT_FALSE(at(0, WorkspaceListModel::IsActiveRole).toBool());
    actions->setSelection(QStringLiteral("recents"));
    actions->activateWorkspace(at(0, WorkspaceListModel::WorkspaceIdRole).toString());
    EXPECT_TRUE(at(0, WorkspaceListModel::IsActiveRole).toBool());
    EXPECT_TRUE(actions->isAllApps());
    const QString work = at(1, WorkspaceListModel::WorkspaceIdRole).toString();
    actions->updateWorkspace(work, QStringLiteral("Play"), {}, {});
    EXPECT_EQ(at(1, WorkspaceListModel::NameRole).toString(), QStringLiteral("Play"));
    actions->deleteWorkspace(work);
    EXPECT_EQ(list.count(), 1);
    actions->activateWorkspace(work);
    EXPECT_EQ(list.shownName(), QStringLiteral("Default"));
}
