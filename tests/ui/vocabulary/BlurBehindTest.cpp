#include "ui/vocabulary/QmlScreen.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

using testing::QmlScreen;

const QByteArray twoViews = R"(Item {
    property bool blurring: left.blurring
    property color backing: left.color
    width: 300; height: 200
    Item {
        objectName: "holder"
        VisualEffectView { id: left; width: 100; height: 200 }
    }
    VisualEffectView { objectName: "right"; x: 200; width: 50; height: 50 }
    VisualEffectView { y: 190; width: 300; height: 10; blendingMode: "withinWindow" }
})";

TEST(BlurBehind, asksForTheSumOfTheVisibleViewsWhereverTheyMove)
{
    QmlScreen screen(twoViews);
    ASSERT_TRUE(screen.effects.blurRegions.empty()) << "this desktop cannot blur";
    const int flatAlpha = screen.item->property("backing").value<QColor>().alpha();

    const auto asked = [&](const QRegion &region) {
        return screen.waitFor([&] {
            screen.window.update();
            return !screen.effects.blurRegions.empty() && screen.effects.blurRegions.back().second == region;
        });
    };
    screen.effects.blurs = true;
    screen.window.setColor(Qt::transparent);
    const QRegion right(200, 0, 50, 50);
    EXPECT_TRUE(asked(QRegion(0, 0, 100, 200) + right));
    EXPECT_TRUE(screen.item->property("blurring").toBool());
    EXPECT_LT(screen.item->property("backing").value<QColor>().alpha(), flatAlpha);

    screen.item->findChild<QQuickItem *>(QStringLiteral("holder"))->setX(30);
    EXPECT_TRUE(asked(QRegion(30, 0, 100, 200) + right)) << "an ancestor moved";
    screen.item->findChild<QQuickItem *>(QStringLiteral("right"))->setVisible(false);
    EXPECT_TRUE(asked(QRegion(30, 0, 100, 200)));

    const size_t requests = screen.effects.blurRegions.size();
    screen.window.setColor(Qt::white);
    EXPECT_FALSE(screen.item->property("blurring").toBool()) << "an opaque window shows nothing behind it";
    EXPECT_TRUE(asked({}));
    EXPECT_EQ(screen.effects.blurRegions.size(), requests + 1) << "asked once for each change";
}

TEST(BlurBehind, takesTheBlurBackWhenItLeavesTheWindow)
{
    QmlScreen screen(twoViews);
    screen.effects.blurs = true;
    screen.window.setColor(Qt::transparent);
    ASSERT_TRUE(screen.item->property("blurring").toBool());
    screen.item.reset();
    ASSERT_FALSE(screen.effects.blurRegions.empty());
    EXPECT_TRUE(screen.effects.blurRegions.back().second.isEmpty());
}

} // namespace
} // namespace quillbay
