#include "ui/CardIcons.h"
#include "ui/ScreenTest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QStyleHints>
#include <QTest>

namespace quillbay::testing {
namespace {

class CardsTest : public ScreenTest
{
protected:
    CardsTest() { library.finder->setAllAppsSortOption(AppSortOption::category); }

    void make(const char *folder) { library.finder->createFolder(QString::fromUtf8(folder), {}, {}); }
    void showGrid(QSize size = {1200, 800})
    {
        show("FocusScope { property string said; focus: true\n"
             "UnifiedGrid { anchors.fill: parent; focus: true;\n"
             "onExpandFolder: id => said = id; onExpandCategory: name => said = name\n"
             "onEscapedUp: said = 'up' } }",
             size);
        await("Add Folder");
    }
    void select(const char *card)
    {
        grid()->forceActiveFocus();
        press(Qt::Key_Home);
        for (int i = 0; i < 10 && !isFocused(card); ++i)
            press(Qt::Key_Right);
        EXPECT_TRUE(isFocused(card));
    }
    QQuickItem *grid() { return find("Folders and categories"); }
    bool isFocused(const char *name) { return find(name)->property("focused").toBool(); }
    std::string said() const { return screen->property("said").toString().toStdString(); }
    bool says(const QString &what)
    {
        const bool result = waitFor([&] { return screen->property("said").toString() == what; });
        screen->setProperty("said", QString());
        return result;
    }
    /// As they are read from the top.
    std::string cards()
    {
        QList<QQuickItem *> cells;
        for (QQuickItem *item : grid()->property("contentItem").value<QQuickItem *>()->childItems()) {
            if (item->property("kind").isValid())
                cells.append(item);
        }
        std::sort(cells.begin(), cells.end(), [](const QQuickItem *a, const QQuickItem *b) {
            return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
        });
        std::string names;
        for (const QQuickItem *cell : cells)
            names += ' ' + cell->property("name").toString().toStdString();
        return names;
    }
    bool become(const char *names)
    {
        return waitFor([&] { return cards() == std::string("  ") + names; });
    }
    std::string entries() const { return shown(QAccessible::MenuItem).join(QLatin1Char(',')).toStdString(); }
    QPoint title(const char *card) { return await(card)->mapToScene({100, 34}).toPoint(); }
    void doubleClickTitle(const char *card)
    {
        const QPoint place = title(card);
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(window.get(), Qt::LeftButton, {}, place);
    }
    /// Whether the drop was taken; `lights` says whether the card shows that it would be.
    bool drop(const QMimeData &data, const char *card, bool lights)
    {
        const QPoint place = await(card)->mapToScene({130, 95}).toPoint();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &move);
        EXPECT_EQ(find(card)->property("targeted").toBool(), lights) << card;
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_FALSE(find(card)->property("targeted").toBool());
        return event.isAccepted();
    }
    bool dropApp(const char *name, const char *card, bool lights)
    {
        QMimeData data;
        data.setUrls({library.app(QString::fromLatin1(name)).url()});
        return drop(data, card, lights);
    }
    bool dropText(const QString &text, const char *card, bool lights)
    {
        QMimeData data;
        data.setText(text);
        return drop(data, card, lights);
    }
    void wheel(const char *card)
    {
        const QPointF place = await(card)->mapToScene({130, 120});
        QWheelEvent event(place, window->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.get(), &event);
    }
};

TEST_F(CardsTest, CardsExpandByPointerAndKeys)
{
    make("Mine");
    showGrid();
    EXPECT_TRUE(become("Mine Office Other Games")) << cards();
    click("Games");
    EXPECT_TRUE(says(QStringLiteral("Games")));
    const QString mine = folderId("Mine");
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, title("Mine"));
    EXPECT_EQ(said(), "") << "a second click may follow";
    EXPECT_TRUE(says(mine));

    select("Office");
    press(Qt::Key_Return);
    EXPECT_TRUE(says(QStringLiteral("Office")));
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_TRUE(says(mine));
    press(Qt::Key_Up);
    EXPECT_TRUE(says(QStringLiteral("up")));

    select("Add Folder");
    press(Qt::Key_Return);
    EXPECT_TRUE(become("Mine New app folder Office Other Games")) << cards();
    click("Add Folder");
    EXPECT_TRUE(waitFor([&] { return library.finder->folders().size() == 3; }));
    EXPECT_EQ(library.folder(QStringLiteral("New app folder")).color, QStringLiteral("#007AFF"));
}

TEST_F(CardsTest, AFolderIsRenamedInPlace)
{
    make("Mine");
    showGrid();
    const auto rename = [&](const char *text, Qt::Key end) {
        ASSERT_TRUE(waitFor([&] {
            const QQuickItem *field = find("Folder Name");
            return field && field->hasActiveFocus();
        }));
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(text);
        press(Qt::Key_Down); // the keys are the field's
        press(end);
        EXPECT_TRUE(waitFor([&] { return !find("Folder Name") && grid()->hasActiveFocus(); }));
    };
    doubleClickTitle("Mine");
    rename("Yours", Qt::Key_Return);
    EXPECT_TRUE(await("Yours"));
    EXPECT_EQ(said(), "") << "renaming does not expand";
    for (const auto &[text, end] : {std::pair("", Qt::Key_Return), {"Ours", Qt::Key_Escape}}) {
        select("Yours");
        press(Qt::Key_F2);
        rename(text, end);
        EXPECT_EQ(names(library.finder->folders()).toStdString(), "Yours");
    }
    select("Games");
    press(Qt::Key_F2);
    doubleClickTitle("Games");
    EXPECT_FALSE(find("Folder Name"));
}

TEST_F(CardsTest, TheMenuOfAFolder)
{
    make("Mine");
    make("Yours");
    showGrid();
    click("Yours", Qt::RightButton);
    await("Rename");
    EXPECT_EQ(entries(), "Rename,Delete,Hide Folder Globally,Add Apps to this folder");
    click("Delete");
    EXPECT_TRUE(become("Mine Office Other Games")) << cards();
    select("Mine");
    press(Qt::Key_F10, Qt::ShiftModifier);
    click("Rename");
    EXPECT_TRUE(waitFor([&] { return find("Folder Name") && find("Folder Name")->hasActiveFocus(); }));
    press(Qt::Key_Escape);
    for (const char *way : {"Add Apps", "Add Apps to this folder"}) {
        viewModel->setShowingAppPicker(false);
        if (!find(way))
            click("Mine", Qt::RightButton);
        click(way);
        EXPECT_TRUE(waitFor([&] { return viewModel->showingAppPicker(); })) << way;
        EXPECT_EQ(viewModel->folderForPicker(), library.folder(QStringLiteral("Mine")));
    }
    EXPECT_EQ(said(), "");
    click("Mine", Qt::RightButton);
    click("Hide Folder Globally");
    EXPECT_TRUE(waitFor([&] { return library.finder->hiddenFolderIDs().size() == 1; }));
}

TEST_F(CardsTest, AHiddenFolderIsOnlyBroughtBack)
{
    make("Mine");
    library.finder->hideFolder(library.folder(QStringLiteral("Mine")));
    viewModel->setSelection(SidebarSelection(SidebarSelection::Case::hidden));
    show(
        "Item { CardMenuHost { id: menu }\n"
        "GridView { anchors.fill: parent; cellHeight: 200; model: HiddenCards; delegate: CategoryCardView {\n"
        "onContextMenuRequested: (x, y) => menu.popUpFor(this, x, y) } } }");
    click("Mine", Qt::RightButton);
    await("Unhide Folder Globally");
    EXPECT_EQ(entries(), "Unhide Folder Globally");
    click("Unhide Folder Globally");
    EXPECT_TRUE(waitFor([&] { return !find("Mine"); }));
    EXPECT_TRUE(library.finder->hiddenFolderIDs().isEmpty());
}

TEST_F(CardsTest, ACategoryFillsAFolder)
{
    showGrid();
    click("Office", Qt::RightButton);
    click("Create Folder from Category");
    EXPECT_TRUE(become("Office Office Other Games")) << cards();
    EXPECT_EQ(members("Office"), QStringLiteral("Ada Cut"));
    click("Games", Qt::RightButton);
    await("Add All to Existing Folder");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    ASSERT_TRUE(waitFor([&] { return shown(QAccessible::MenuItem).contains(QStringLiteral("Office")); }));
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([&] { return members("Office") == QStringLiteral("Ada Cut Bix"); }));
}

TEST_F(CardsTest, DropsFileApplicationsAndMoveCards)
{
    make("Mine");
    showGrid();
    EXPECT_TRUE(dropApp("Dot", "Mine", true));
    EXPECT_TRUE(waitFor([&] { return members("Mine") == QStringLiteral("Dot"); }));
    EXPECT_FALSE(dropApp("Dot", "Games", false));
    EXPECT_FALSE(dropApp("Dot", "Add Folder", false));

    EXPECT_FALSE(dropText(QStringLiteral("words"), "Games", false));
    EXPECT_FALSE(dropText(QStringLiteral("category:None"), "Games", true));
    EXPECT_TRUE(dropText(QStringLiteral("category:Office"), "Games", true));
    EXPECT_TRUE(become("Mine Other Games Office")) << cards();
    EXPECT_TRUE(dropText(QStringLiteral("category:Games"), "Mine", true));
    EXPECT_TRUE(become("Games Mine Other Office")) << cards();
}

TEST_F(CardsTest, TheWheelScrollsAFullCardBeforeTheGrid)
{
    appearance.setReducedMotion(true);
    QStringList many{QStringLiteral("Dot")};
    for (int i = 0; i < 30; ++i)
        many.append(QStringLiteral("A%1:Office").arg(i));
    ASSERT_TRUE(library.install(many));
    for (const char *name : {"a", "b", "c", "d", "e", "f"})
        make(name);
    showGrid({700, 500});
    const auto place = [&] { return grid()->property("contentY").toReal(); };
    const qreal top = place();
    wheel("Add Folder");
    ASSERT_TRUE(waitFor([&] { return place() > top; })) << "nothing in it to scroll";
    grid()->setProperty("contentY", 500);
    ASSERT_TRUE(await("Office"));
    // The grid was moving: the wheel goes on moving it for a while.
    ASSERT_TRUE(waitFor([&] { return !find("Office")->property("wheelPasses").toBool(); }));
    const qreal before = place();
    wheel("Office");
    EXPECT_EQ(place(), before);
    int turns = 1;
    for (; turns < 100 && place() == before; ++turns)
        wheel("Office");
    EXPECT_GT(turns, 5);
    EXPECT_LT(turns, 100) << "the end of the card is not the end of the way";
}

TEST_F(CardsTest, ACardLoadsAndShowsOnlyTheIconsInSight)
{
    QStringList many;
    for (int i = 0; i < 300; ++i)
        many.append(QStringLiteral("A%1:Office").arg(i));
    library.fakes.icons->setColor(QStringLiteral("/apps/A0"), Qt::red);
    ASSERT_TRUE(library.install(many));
    showGrid();
    const QPoint place = await("Office")->mapToScene({34 + 12 + 24, 90}).toPoint();
    const auto shows = [&](Qt::GlobalColor color) {
        return waitFor([&] {
            const QImage picture = window->grabWindow();
            return picture.pixelColor(place * picture.devicePixelRatio()) == QColor(color);
        });
    };
    EXPECT_TRUE(shows(Qt::red));
    appearance.setReducedMotion(true);
    wheel("Office");
    EXPECT_TRUE(waitFor([&] { return library.fakes.icons->askedPaths().size() > 12; }));
    EXPECT_LT(library.fakes.icons->askedPaths().size(), 30);
}

TEST(CardIcon, HasRoundCornersAboveADarkShadow)
{
    for (const int edge : {48, 60, 96}) {
        QImage icon(edge, edge, QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::blue);
        const QImage shown = cardIcon(icon);
        const int reach = (shown.width() - edge) / 2;
        const auto at = [&](double x, double y) {
            return shown.pixelColor(reach + int(x * edge), reach + int(y * edge));
        };
        EXPECT_EQ(at(0.5, 0.5), QColor(Qt::blue));
        EXPECT_NE(at(0, 0), QColor(Qt::blue));
        EXPECT_EQ(at(0.5, 0), QColor(Qt::blue));
        const QColor below = at(0.5, 1.02);
        EXPECT_EQ(below.blue(), 0);
        EXPECT_GT(below.alphaF(), 0.1);
        EXPECT_LT(below.alphaF(), at(0.5, 0.5).alphaF());
        EXPECT_EQ(shown.pixelColor(0, 0).alpha(), 0);
    }
}

} // namespace
} // namespace quillbay::testing
