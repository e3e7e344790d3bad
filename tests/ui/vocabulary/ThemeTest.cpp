#include "ui/vocabulary/QmlScreen.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

using testing::QmlScreen;

TEST(Theme, screensFollowTheDesktopWhileTheyStand)
{
    QmlScreen screen(R"(Item {
        property color text: Theme.primary
        property color faded: Theme.fade(Theme.primary, 0.5)
        property color backing: view.color
        property int motion: Theme.motion
        property string first: Theme.presetColors[0].hex + Theme.presetColors[6].name
        VisualEffectView { id: view }
    })");
    const QQuickItem &item = *screen.item;
    const QColor lightBacking = item.property("backing").value<QColor>();
    EXPECT_EQ(item.property("text").value<QColor>(), QColor(0, 0, 0, 217));
    EXPECT_EQ(item.property("motion"), 1);
    EXPECT_EQ(item.property("first"), QStringLiteral("#007AFFGray"));

    screen.appearance.setDark(true);
    screen.appearance.setReducedMotion(true);
    EXPECT_EQ(item.property("text").value<QColor>(), QColor(255, 255, 255, 217));
    EXPECT_NEAR(item.property("faded").value<QColor>().alphaF(), 217 / 510.0, 0.001);
    EXPECT_LT(item.property("backing").value<QColor>().lightness(), lightBacking.lightness());
    EXPECT_EQ(item.property("motion"), 0);
}

TEST(Theme, mixesEndToEnd)
{
    const QColor first(255, 0, 0, 0);
    const QColor second(0, 100, 200);
    EXPECT_EQ(Theme::mix(first, second, 0).rgba(), first.rgba());
    EXPECT_EQ(Theme::mix(first, second, 1).rgba(), second.rgba());
    EXPECT_EQ(Theme::mix(first, second, 0.5).green(), 50);
}

} // namespace
} // namespace quillbay
