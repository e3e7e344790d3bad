#include "foundation/Uuid.h"
#include "ui/ScreenTest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTest>

namespace quillbay::testing {
namespace {

class SidebarTest : public ScreenTest
{
protected:
    void make(const char *name, const char *parent = nullptr)
    {
        std::optional<QUuid> above;
        if (parent)
            above = library.folder(QString::fromUtf8(parent)).id;
        library.finder->createFolder(QString::fromUtf8(name), QStringLiteral("star"),
                                     QStringLiteral("#FF3B30"), above);
    }
    void showSidebar()
    {
        show("Item { SidebarView { width: 240; height: parent.height } }", {900, 800});
        ASSERT_TRUE(waitFor([&] { return find("All Apps") != nullptr; }));
    }
    std::string selected() const
    {
        return viewModel->selection() ? viewModel->selection()->title().toStdString() : std::string();
    }
    std::string roots() const { return names(library.finder->getRootFolders()).toStdString(); }
    /// Clicks what has just come up, once it has its place.
    void answer(const char *name)
    {
        await(name);
        QSignalSpy drawn(window.get(), &QQuickWindow::frameSwapped);
        window->update();
        EXPECT_TRUE(drawn.wait());
        click(name);
    }
    void choose(const char *row, const char *entry)
    {
        click(row, Qt::RightButton);
        answer(entry);
    }
    void pressOnList(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        find("Sidebar")->forceActiveFocus();
        press(key, modifiers);
    }
    QPoint placeOf(const char *row, double part)
    {
        const QQuickItem *item = await(row);
        return item->mapToScene(QPointF(item->width() / 2, item->height() * part)).toPoint();
    }
    bool isGone(const char *name)
    {
        return waitFor([&] { return !find(name); });
    }
    /// Whether it was taken.
    bool drop(const QMimeData &data, const char *row)
    {
        const QPoint place = placeOf(row, 0.5);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
};

TEST_F(SidebarTest, TheSelectionFollowsThePointerAndTheKeys)
{
    make("Work");
    make("Inner", "Work");
    showSidebar();
    EXPECT_EQ(shown(QAccessible::ListItem).join(QLatin1Char(',')),
              QLatin1String("All Apps,Newly Added,Recent Apps,Favorites,Hidden Apps,Work,Inner"));
    click("Favorites");
    EXPECT_EQ(selected(), "Favorites");
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(find("Favorites"))->state().selected);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(find("All Apps"))->state().selected);
    const std::pair<Qt::Key, const char *> steps[] = {
        {Qt::Key_Down, "Hidden Apps"}, {Qt::Key_Down, "Work"},   {Qt::Key_Down, "Inner"},
        {Qt::Key_Down, "Inner"},       {Qt::Key_Up, "Work"},     {Qt::Key_Up, "Hidden Apps"},
        {Qt::Key_Home, "All Apps"},    {Qt::Key_Up, "All Apps"}, {Qt::Key_End, "Inner"},
    };
    for (const auto &[key, expected] : steps) {
        pressOnList(key);
        EXPECT_EQ(selected(), expected);
    }
    viewModel->setSelection(SidebarSelection::ofCategory(QStringLiteral("Office")));
    pressOnList(Qt::Key_Down);
    EXPECT_EQ(selected(), "All Apps");
}

TEST_F(SidebarTest, ManyFoldersAreRowsOnlyWhileTheyAreSeen)
{
    for (int i = 0; i < 300; ++i)
        make(qPrintable(QStringLiteral("Folder %1").arg(i)));
    showSidebar();
    EXPECT_LT(shown(QAccessible::ListItem).size(), 40);
    EXPECT_GT(placeOf("All Apps", 0).y(), 0);
    find("New Folder")->forceActiveFocus();
    EXPECT_TRUE(waitFor([&] { return placeOf("New Folder", 1).y() < window->height(); }));
    pressOnList(Qt::Key_End);
    EXPECT_EQ(selected(), library.finder->getRootFolders().last().name.toStdString());
    EXPECT_TRUE(find(selected().c_str()));
    pressOnList(Qt::Key_Home);
    EXPECT_TRUE(waitFor([&] { return placeOf("All Apps", 0).y() > 0; }));
}

TEST_F(SidebarTest, AFolderIsMadeWithAnyNameButNone)
{
    showSidebar();
    click("New Folder");
    await("Create Folder");
    answer("Create");
    EXPECT_TRUE(find("Create Folder"));
    answer("Folder Name");
    type("  ");
    press(Qt::Key_Return);
    EXPECT_TRUE(isGone("Create Folder"));
    ASSERT_EQ(library.finder->folders().size(), 1);
    const AppFolder made = library.finder->folders().first();
    EXPECT_EQ(made.name + made.icon + made.color, QStringLiteral("  folder#007AFF"));
}

TEST_F(SidebarTest, ACancelledEditLeavesItsLookToTheNextNewFolderOnce)
{
    make("Work");
    showSidebar();
    choose("Work", "Rename");
    await("Edit Folder");
    press(Qt::Key_Escape);
    ASSERT_TRUE(isGone("Edit Folder"));
    for (const char *look : {"star#FF3B30", "folder#007AFF"}) {
        click("New Folder");
        answer("Folder Name");
        type("New");
        answer("Create");
        ASSERT_TRUE(isGone("Create Folder"));
        const AppFolder made = library.folder(QStringLiteral("New"));
        EXPECT_EQ(made.icon + made.color, QString::fromUtf8(look));
        viewModel->deleteFolder(made);
    }
}

TEST_F(SidebarTest, TheContextMenuPinsRenamesAndDeletes)
{
    make("Work");
    showSidebar();
    choose("Work", "Pin Folder");
    EXPECT_TRUE(library.folder(QStringLiteral("Work")).isPinned);
    choose("Work", "Unpin Folder");
    EXPECT_FALSE(library.folder(QStringLiteral("Work")).isPinned);

    choose("Work", "Rename");
    await("Edit Folder");
    answer("Folder Name");
    press(Qt::Key_A, Qt::ControlModifier);
    type("Play");
    answer("Save");
    ASSERT_TRUE(isGone("Edit Folder"));
    EXPECT_EQ(roots(), "Play");

    click("Play");
    pressOnList(Qt::Key_Menu);
    answer("Delete");
    await("Are you sure you want to delete 'Play'? This action cannot be undone.");
    press(Qt::Key_Return);
    ASSERT_TRUE(isGone("Delete Folder"));
    EXPECT_EQ(roots(), "Play");
    pressOnList(Qt::Key_F10, Qt::ShiftModifier);
    answer("Delete");
    await("Cancel");
    answer("Delete");
    EXPECT_TRUE(isGone("Play"));
    EXPECT_EQ(selected(), "All Apps");
}

TEST_F(SidebarTest, AnApplicationGoesIntoTheFolderThatItIsDroppedOn)
{
    make("Work");
    make("Inner", "Work");
    showSidebar();
    QMimeData app;
    app.setUrls({library.app(QStringLiteral("Ada")).url()});
    EXPECT_TRUE(drop(app, "Inner"));
    EXPECT_TRUE(waitFor([&] { return members("Inner") == QLatin1String("Ada"); }));
    EXPECT_EQ(members("Work"), QString());
    QMimeData card;
    card.setText(QStringLiteral("category:Office"));
    EXPECT_FALSE(drop(card, "Inner"));
}

TEST_F(SidebarTest, RootFoldersMoveWithTheirSubfolders)
{
    make("C");
    make("B");
    make("A");
    ASSERT_EQ(roots(), "C B A");
    make("Inner", "B");
    showSidebar();
    const auto dragTo = [this](const char *from, int row, const char *to, double part) {
        ASSERT_TRUE(waitFor([&] { return find(from)->y() == 32 * row; }));
        const QPoint place = placeOf(from, 0.5);
        QTest::mousePress(window.get(), Qt::LeftButton, {}, place);
        const QPoint target = placeOf(to, part);
        for (int i = 1; i <= 4; ++i)
            QTest::mouseMove(window.get(), place + (target - place) * i / 4);
        QTest::mouseRelease(window.get(), Qt::LeftButton, {}, target);
    };
    dragTo("C", 0, "A", 0.9);
    EXPECT_EQ(roots(), "B A C");
    dragTo("C", 3, "Inner", 0.1);
    EXPECT_EQ(roots(), "C B A");
    dragTo("Inner", 2, "C", 0.1);
    EXPECT_EQ(roots(), "C B A");
    EXPECT_EQ(selected(), "All Apps");

    click("B");
    pressOnList(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(roots(), "C A B");
    pressOnList(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(roots(), "C A B");
    for (int i = 0; i < 3; ++i)
        pressOnList(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(roots(), "B C A");
    EXPECT_EQ(selected(), "B");
}

TEST_F(SidebarTest, WorkspacesAreMadeSwitchedEditedAndDeleted)
{
    make("Work");
    showSidebar();
    click("Default");
    await("Create Workspace...");
    EXPECT_FALSE(find("Manage"));
    answer("Create Workspace...");
    answer("Workspace Name");
    type("Home");
    press(Qt::Key_Return);
    ASSERT_TRUE(isGone("Create Workspace"));
    EXPECT_TRUE(isGone("Work"));
    viewModel->setSelection(SidebarSelection(SidebarSelection::Case::recents));

    const auto manage = [this](const char *shown, int workspace) {
        click(shown);
        await("Manage");
        for (int i = 0; i < 4; ++i) // two workspaces, "Create Workspace..." and "Manage"
            press(Qt::Key_Down);
        press(Qt::Key_Right);
        for (int i = 0; i < workspace; ++i)
            press(Qt::Key_Down);
        press(Qt::Key_Right);
        await("Edit...");
    };
    manage("Home", 1);
    EXPECT_FALSE(find("Delete"));
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Escape);
    manage("Home", 0);
    press(Qt::Key_Return);
    await("Edit Workspace");
    type("First");
    press(Qt::Key_Return);
    ASSERT_TRUE(isGone("Edit Workspace"));
    EXPECT_EQ(library.workspaces->workspaces().first().name, QStringLiteral("First"));

    click("Home");
    answer("First");
    EXPECT_TRUE(waitFor([&] { return find("Work") != nullptr; }));
    EXPECT_EQ(selected(), "All Apps");
    manage("First", 1);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([&] { return library.workspaces->workspaces().size() == 1; }));
    answer("First");
    await("Create Workspace...");
    EXPECT_TRUE(isGone("Manage"));
}

TEST_F(SidebarTest, TheSplitterMovesByKeyboardWithinItsLimits)
{
    show("SplitDivider { minimum: 220; ideal: 240; maximum: 320; position: 300; height: 600; onMoved: to => "
         "position = to }");
    QQuickItem *splitter = await("Sidebar width");
    splitter->forceActiveFocus(Qt::TabFocusReason);
    const auto position = [&] { return splitter->property("position").toInt(); };
    press(Qt::Key_Left);
    EXPECT_EQ(position(), 292);
    for (int i = 0; i < 5; ++i)
        press(Qt::Key_Right);
    EXPECT_EQ(position(), 320);
    press(Qt::Key_Return);
    EXPECT_EQ(position(), 240);
}

} // namespace
} // namespace quillbay::testing
