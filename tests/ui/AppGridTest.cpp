#include "app/GridDrops.h"
#include "app/SelectionKey.h"
#include "ui/GridColumns.h"
#include "ui/ScreenTest.h"

#include <QPointingDevice>
#include <QSignalSpy>
#include <QTest>

#include <map>
#include <random>

namespace quillbay::testing {
namespace {

class AppGridTest : public ScreenTest
{
protected:
    void makeFolder(const QStringList &apps)
    {
        library.finder->createFolder(QStringLiteral("F"), QStringLiteral("folder"),
                                     QStringLiteral("#007AFF"));
        for (const QString &app : apps)
            library.finder->addAppToFolder(library.app(app), library.folder(QStringLiteral("F")));
    }
    void select(const QString &key)
    {
        viewModel->setSelection(selectionOfKey(key, library.finder->folders()));
    }
    int tilesOf(const char *grid) const
    {
        const QQuickItem *item = find(grid);
        return item ? item->property("count").toInt() : -1;
    }
    /// Names of the shown tiles, as they stand.
    QStringList tiles() const
    {
        std::map<std::pair<int, int>, QString> places;
        const QQuickItem *content = screen->property("contentItem").value<QQuickItem *>();
        for (const QQuickItem *item : content->childItems()) {
            if (item->isVisible() && item->property("path").isValid())
                places[{int(item->y()), int(item->x())}] = item->property("name").toString();
        }
        QStringList list;
        for (const auto &[place, name] : places)
            list.append(name);
        return list;
    }
};

/// Tiles are used again for other applications, glide to new places and are cut off on the way: whatever
/// comes in between, in the end they stand as the list has them.
TEST_F(AppGridTest, TilesShowWhatIsListedWhateverHappensOnTheWay)
{
    QStringList all;
    for (int i = 10; i < 50; ++i)
        all.append(QStringLiteral("App %1").arg(i));
    ASSERT_TRUE(library.install(all));
    makeFolder({all[3], all[2], all[9], all[5], all[20]});
    const QString folder = QStringLiteral("folder:") + folderId("F");
    show("TileGrid { property bool isShown: true; "
         "apps: isShown ? ViewModel.filteredApps : null; folder: Library.selectedFolder "
         "}");
    GridDrops drops(*viewModel);
    std::mt19937 random(7);
    const auto member = [&] {
        const QList<AppItem> apps = library.finder->getAppsInFolder(library.folder(QStringLiteral("F")));
        return apps[qsizetype(random() % size_t(apps.size()))].path;
    };
    for (int round = 0; round < 150; ++round) {
        switch (random() % 7) {
        case 0:
            select(QStringLiteral("allApps"));
            break;
        case 1:
            viewModel->setSearchQuery(random() % 2 ? QStringLiteral("App 2") : QString());
            break;
        case 2:
            screen->setProperty("glides", random() % 2 == 0);
            break;
        case 3:
            screen->setProperty("isShown", false);
            select(random() % 2 ? folder : QStringLiteral("allApps"));
            screen->setProperty("isShown", true);
            break;
        case 4:
            QTest::qWait(int(random() % 40));
            break;
        default:
            select(folder);
            screen->setProperty("glides", random() % 4 != 0);
            const QUrl url = drops.beginAppDrag(member());
            drops.hoverOnTile(member(), folderId("F"));
            drops.dropOnTile({url}, member(), folderId("F"));
        }
        const QStringList listed = names(viewModel->filteredApps()->items())
                                       .replace(QStringLiteral(" App"), QStringLiteral(",App"))
                                       .split(u',');
        const auto isRight = [&] {
            const QStringList seen = tiles();
            return !seen.isEmpty() && seen == listed.mid(0, seen.size());
        };
        if (round % 5 == 4) {
            ASSERT_TRUE(waitFor(isRight)) << "round " << round << ": " << tiles().join(u' ').toStdString();
        }
    }
}

TEST_F(AppGridTest, CountsItsColumnsAlsoAfterAJumpOfTheWidth)
{
    QStringList all;
    for (int i = 10; i < 50; ++i)
        all.append(QStringLiteral("App %1").arg(i));
    ASSERT_TRUE(library.install(all));
    show("TileGrid { apps: ViewModel.filteredApps }", {1200, 800});
    for (const int width : {700, 1301, 760, 1000, 1001, 400}) {
        screen->setWidth(width);
        const int columns = appColumns(width).count;
        EXPECT_TRUE(waitFor([&] {
            const QStringList seen = tiles();
            const QQuickItem *next = find(all[columns]);
            return next && seen.value(columns) == all[columns] && next->x() == find(all[0])->x();
        })) << width;
    }
}

TEST_F(AppGridTest, ShowsTheLayoutOfTheSelection)
{
    makeFolder({});
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    EXPECT_TRUE(await("Ada"));
    EXPECT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Search Apps..."); }));

    click("Sort");
    click("Category");
    EXPECT_TRUE(await("Folders and categories"));
    EXPECT_FALSE(find("Applications"));
    EXPECT_EQ(library.preferences.string(QStringLiteral("AllAppsSortOption")), QStringLiteral("Category"));
    type("d");
    EXPECT_TRUE(waitFor([&] { return tilesOf("Applications") == 2; }))
        << "a query shows tiles in every order";
    click("Clear search");
    EXPECT_TRUE(await("Folders and categories"));

    select(QStringLiteral("folder:") + folderId("F"));
    EXPECT_TRUE(await("No apps in this folder"));
    EXPECT_FALSE(find("Sort"));
    click("Add Apps");
    EXPECT_TRUE(viewModel->showingAppPicker());
    EXPECT_EQ(viewModel->folderForPicker()->name, QStringLiteral("F"));
    EXPECT_TRUE(await("Done"));
    click("Done");
    EXPECT_TRUE(waitFor([&] { return !viewModel->showingAppPicker(); }));
    library.finder->addAppToFolder(library.app(QStringLiteral("Dot")), library.folder(QStringLiteral("F")));
    EXPECT_TRUE(await("Dot"));
    EXPECT_FALSE(find("No apps in this folder"));

    select(QStringLiteral("category:Office"));
    EXPECT_TRUE(await("Ada"));
    click("All Categories");
    EXPECT_TRUE(await("Folders and categories"));
    select(QStringLiteral("recents"));
    EXPECT_TRUE(waitFor([&] { return tilesOf("Applications") == 0; })) << "an empty list shows no message";
    EXPECT_FALSE(find("No apps in this folder"));
}

TEST_F(AppGridTest, ALockedHiddenListShowsNothing)
{
    library.preferences.setString(QStringLiteral("quillbay_hidden_password"), QStringLiteral("secret"));
    library.finder->hideApp(library.app(QStringLiteral("Ada")));
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    select(QStringLiteral("hidden"));
    QCoreApplication::processEvents();
    EXPECT_FALSE(find("Ada"));
    EXPECT_FALSE(find("Hidden Apps") && find("Applications"));
    viewModel->setIsHiddenUnlocked(true);
    EXPECT_TRUE(await("Ada"));
    select(QStringLiteral("allApps"));
    EXPECT_FALSE(viewModel->isHiddenUnlocked());
}

TEST_F(AppGridTest, TheMenuOfATileFollowsTheSelection)
{
    makeFolder({QStringLiteral("Ada")});
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    click("Ada", Qt::RightButton);
    click("Add to Favorites");
    EXPECT_TRUE(library.finder->isFavorite(library.app(QStringLiteral("Ada"))));
    click("Bix", Qt::RightButton);
    click("Add to Folder");
    click("F");
    EXPECT_TRUE(waitFor([&] { return members("F") == QStringLiteral("Ada Bix"); }));
    select(QStringLiteral("folder:") + folderId("F"));
    click("Bix", Qt::RightButton);
    EXPECT_FALSE(find("Add to Folder"));
    click("Remove from Folder");
    EXPECT_EQ(members("F"), QStringLiteral("Ada"));
    press(Qt::Key_Tab);
    press(Qt::Key_Menu);
    click("Remove from Favorites");
    EXPECT_FALSE(library.finder->isFavorite(library.app(QStringLiteral("Ada"))));
    EXPECT_TRUE(waitFor([&] { return find("Applications")->hasActiveFocus(); }))
        << "the keyboard goes back where it was";
    press(Qt::Key_Return);
    EXPECT_EQ(library.fakes.launcher->requests.size(), 1);
}

TEST_F(AppGridTest, AHeldMouseOpensNoMenuButAFingerDoes)
{
    show("AppGridView { hostWindow: Window.window; isBrowsing: false }");
    QQuickItem *area = nullptr;
    for (QQuickItem *child : await("Ada")->childItems()) {
        if (child->inherits("QQuickMouseArea"))
            area = child;
    }
    ASSERT_TRUE(area);
    const QSignalSpy held(area, SIGNAL(pressAndHold(QQuickMouseEvent *)));
    const QPoint place = area->mapToScene(QPointF(20, 20)).toPoint();
    QTest::mousePress(window.get(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(waitFor([&] { return held.count() == 1; }));
    EXPECT_FALSE(find("Add to Favorites"));
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, place);
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    QTest::touchEvent(window.get(), finger.get()).press(0, place);
    EXPECT_TRUE(await("Add to Favorites"));
    QTest::touchEvent(window.get(), finger.get()).release(0, place);
}

TEST_F(AppGridTest, TheHiddenListShowsFoldersAndApplicationsOrThatThereIsNothing)
{
    makeFolder({QStringLiteral("Dot")});
    select(QStringLiteral("hidden"));
    show("HiddenList {}");
    EXPECT_TRUE(await("No Hidden Items"));
    library.finder->hideFolder(library.folder(QStringLiteral("F")));
    library.finder->hideApp(library.app(QStringLiteral("Ada")));
    EXPECT_TRUE(await("Hidden Folders"));
    EXPECT_TRUE(await("Ada"));
    EXPECT_FALSE(find("No Hidden Items"));
    click("F", Qt::RightButton);
    click("Unhide Folder Globally");
    EXPECT_TRUE(waitFor([&] { return !find("F"); }));
    EXPECT_TRUE(library.finder->hiddenFolderIDs().isEmpty());
    click("Ada", Qt::RightButton);
    EXPECT_FALSE(find("Add to Folder"));
    click("Unhide App Globally");
    EXPECT_TRUE(await("No Hidden Items"));
}

} // namespace
} // namespace quillbay::testing
