#include "ui/ScreenTest.h"

#include <QTest>

namespace quillbay::testing {
namespace {

class ThinScrollBarTest : public ScreenTest
{
protected:
    /// Content of `height` in a view of 300 by 300, with a margin of 20 above it.
    void showContent(int height)
    {
        show("Item { property alias place: view.contentY\n"
             "Flickable { id: view; width: 300; height: 300; topMargin: 20; contentHeight: " +
             QByteArray::number(height) +
             "\n Rectangle { width: 10; height: 10 }\n ThinScrollBar { view: view; lingering: 1 } } }");
    }
    double place() const { return screen->property("place").toDouble(); }
    void moveTo(int x, int y) { QTest::mouseMove(window.get(), {x, y}); }
};

TEST_F(ThinScrollBarTest, ComesWithMovementOrThePointerAndGoes)
{
    showContent(1000);
    EXPECT_FALSE(find("Scroll bar"));
    screen->setProperty("place", 100);
    EXPECT_TRUE(find("Scroll bar"));
    EXPECT_TRUE(waitFor([&] { return !find("Scroll bar"); }));
    moveTo(100, 100);
    moveTo(295, 100);
    EXPECT_TRUE(waitFor([&] { return find("Scroll bar"); }));
    moveTo(100, 100);
    EXPECT_TRUE(waitFor([&] { return !find("Scroll bar"); }));
}

TEST_F(ThinScrollBarTest, IsDraggedAndTurnsPages)
{
    showContent(1000);
    moveTo(295, 10);
    ASSERT_TRUE(await("Scroll bar"));
    QTest::mousePress(window.get(), Qt::LeftButton, {}, {295, 10});
    moveTo(295, 100);
    const double dragged = place();
    EXPECT_GT(dragged, 200);
    moveTo(295, 400);
    EXPECT_EQ(place(), 700);
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, {295, 290});
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, {295, 20});
    EXPECT_TRUE(waitFor([&] { return place() == 700 - 0.9 * 300; }));
}

TEST_F(ThinScrollBarTest, StaysAwayWhereAllFits)
{
    showContent(280);
    moveTo(100, 100);
    moveTo(295, 100);
    EXPECT_FALSE(find("Scroll bar"));
    EXPECT_EQ(place(), -20);
}

} // namespace
} // namespace quillbay::testing
