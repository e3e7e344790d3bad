#include "ui/PaintedText.h"
#include "ui/ScreenTest.h"

namespace quillbay::testing {
namespace {

TextLook look(const char *text, int lines, qreal width = 110)
{
    return {QString::fromUtf8(text), 0xff000000, 12, 500, lines, true, width, 1};
}

TEST(PaintedText, TakesAsManyLinesAsItMayAndNoMoreRoomThanItsLetters)
{
    const QSize line = paintText(look("Ada", 2)).picture.size();
    const QSize two = paintText(look("Document Viewer of the Desktop", 2)).picture.size();
    EXPECT_EQ(two.height() - line.height(), textLineHeight(12, 500));
    EXPECT_EQ(paintText(look("Document Viewer of the Desktop and of all others", 2)).picture.height(),
              two.height())
        << "the third line is left out";
    EXPECT_EQ(paintText(look("Document Viewer of the Desktop", 1)).picture.height(), line.height());
    for (const char *wide :
         {"Document Viewer of the Desktop and of all others", "Donaudampfschifffahrtsgesellschaft"})
        EXPECT_LE(paintText(look(wide, 2)).picture.width(), 110 + 8) << wide;
    EXPECT_LT(line.width(), 60);
    EXPECT_TRUE(paintText(look("", 2)).picture.isNull());
    EXPECT_TRUE(paintText(look("Ada", 2, 0)).picture.width() <= line.width());
}

TEST(PaintedText, StandsInTheMiddleAtEveryScale)
{
    for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
        TextLook scaled = look("Chess", 1);
        scaled.ratio = ratio;
        const PaintedText painted = paintText(scaled);
        EXPECT_NEAR(painted.place.x() + painted.picture.width() / 2.0, 110 * ratio / 2, 1.5) << ratio;
        scaled.isCentered = false;
        EXPECT_LE(paintText(scaled).place.x(), 0) << ratio;
        EXPECT_NEAR(painted.picture.height(), paintText(look("Chess", 1)).picture.height() * ratio, 9)
            << ratio;
    }
}

using PictureHoleTest = ScreenTest;

TEST_F(PictureHoleTest, NothingIsDrawnInTheHoleAndEverythingAroundIt)
{
    show("Rectangle { color: 'white'\n"
         "PictureItem { x: 10; y: 10; width: 200; height: 100; hole: Qt.rect(50, 20, 100, 60)\n"
         "picture: Artwork.panel(200, 100, 0, 'black', 'black', 1) } }",
         {300, 200});
    const QImage seen = window->grabWindow();
    for (const QPoint hidden : {QPoint(110, 60), QPoint(62, 32), QPoint(157, 87)})
        EXPECT_EQ(seen.pixelColor(hidden), QColor(Qt::white)) << hidden.x();
    for (const QPoint drawn :
         {QPoint(20, 60), QPoint(200, 60), QPoint(110, 15), QPoint(110, 105), QPoint(15, 15)})
        EXPECT_LT(seen.pixelColor(drawn).red(), 40) << drawn.x();
}

} // namespace
} // namespace quillbay::testing
