#include "ui/ScreenTest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTest>

namespace quillbay::testing {
namespace {

class ModalTest : public ScreenTest
{
protected:
    /// Over a field that has the keyboard. `folder` may be empty: then a category's, with the same members.
    void open(bool isFolder)
    {
        library.finder->createFolder(QStringLiteral("Mine"), {}, {});
        for (const char *name : {"Ada", "Bix", "Cut"})
            library.finder->addAppToFolder(library.app(QString::fromLatin1(name)),
                                           library.folder(QStringLiteral("Mine")));
        const QByteArray id = folderId("Mine").toLatin1();
        show("FocusScope { focus: true; property bool open: false\n"
             "CustomTextField { placeholder: 'Behind'; focus: true; width: 100 }\n"
             "Loader { anchors.fill: parent; active: parent.open\n"
             "sourceComponent: CategoryModalView { title: 'Mine'\n"
             "apps: FolderContents.apps('" +
             id + "'); folderId: '" + (isFolder ? id : QByteArray()) +
             "'\nonDismissed: parent.parent.open = false } } }");
        screen->setProperty("open", true);
        ASSERT_TRUE(waitFor([&] { return find("Mine") && find("Mine")->opacity() == 1; }));
    }
    bool closes()
    {
        return waitFor([&] { return !find("Mine"); });
    }
    bool isInside() const
    {
        const QQuickItem *panel = find("Mine");
        return window->activeFocusItem() && panel->isAncestorOf(window->activeFocusItem());
    }
    bool drop(const char *app, const char *tile)
    {
        QMimeData data;
        data.setUrls({library.app(QString::fromLatin1(app)).url()});
        const QPoint place = await(tile)->mapToScene({50, 50}).toPoint();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &enter);
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
};

TEST_F(ModalTest, TheKeyboardStaysInsideAndGoesBack)
{
    open(true);
    EXPECT_TRUE(find("3 Apps"));
    EXPECT_TRUE(isInside());
    for (const Qt::Key key :
         {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down}) {
        press(key);
        EXPECT_TRUE(isInside());
    }
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), find("Close"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(closes());
    EXPECT_TRUE(waitFor([&] { return window->activeFocusItem() == find("Behind"); }));
}

TEST_F(ModalTest, LaunchingClosesIt)
{
    open(false);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_TRUE(closes());
    EXPECT_EQ(library.fakes.launcher->paths(), QStringList{QStringLiteral("/apps/Bix")});
    screen->setProperty("open", true);
    click("Cut");
    EXPECT_TRUE(closes());
    EXPECT_EQ(library.fakes.launcher->paths().size(), 2);
}

TEST_F(ModalTest, APressBesideThePanelClosesIt)
{
    open(false);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, {600, 640}); // on the panel, below its tiles
    EXPECT_EQ(find("Mine")->opacity(), 1);
    click("Close");
    EXPECT_TRUE(closes());
    screen->setProperty("open", true);
    ASSERT_TRUE(await("Mine"));
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, {20, 700});
    EXPECT_TRUE(closes());
}

TEST_F(ModalTest, AFolderIsPutInOrderByDrops)
{
    open(true);
    EXPECT_TRUE(drop("Ada", "Cut"));
    EXPECT_EQ(members("Mine"), QStringLiteral("Bix Cut Ada"));
    const auto place = [&](const char *tile) { return await(tile)->mapToScene({}).x(); };
    EXPECT_TRUE(waitFor([&] { return place("Bix") < place("Cut") && place("Cut") < place("Ada"); }));
}

TEST_F(ModalTest, ACategoryHasNoOrderToChange)
{
    open(false);
    EXPECT_FALSE(drop("Ada", "Cut"));
    EXPECT_EQ(members("Mine"), QStringLiteral("Ada Bix Cut"));
}

TEST_F(ModalTest, ItFitsIntoASmallWindow)
{
    open(false);
    window->resize(500, 400);
    screen->setSize({500, 400});
    const QQuickItem *tiles = await("Applications");
    EXPECT_TRUE(waitFor([&] { return tiles->width() == 452; }));
}

} // namespace
} // namespace quillbay::testing
