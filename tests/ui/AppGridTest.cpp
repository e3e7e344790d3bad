#include "app/GridDrops.h"
#include "app/SelectionKey.h"
#include "ui/ScreenTest.h"

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
    show("TileGrid { hostWindow: Window.window; property bool isShown: true; "
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

} // namespace
} // namespace quillbay::testing
