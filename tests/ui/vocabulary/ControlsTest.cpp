#include "ui/vocabulary/QmlScreen.h"

#include <QAccessible>
#include <QImage>
#include <QSignalSpy>
#include <QStyleHints>
#include <QTest>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

using testing::QmlScreen;

// Counts what wakes an idle program.
class TimerEvents : public QObject
{
public:
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Timer)
            ++count;
        return false;
    }
};

TEST(Buttons, areReadAndPressedByAssistiveTechnology)
{
    for (const QByteArray style : {"PrimaryButtonStyle", "DestructiveButtonStyle", "GhostButtonStyle"}) {
        QmlScreen screen(style + R"( { text: "Move"; symbol: "trash.fill" })");
        QSignalSpy clicked(screen.item.get(), SIGNAL(clicked()));
        QAccessibleInterface *button = QAccessible::queryAccessibleInterface(screen.item.get());
        ASSERT_TRUE(button) << style.constData();
        EXPECT_EQ(button->role(), QAccessible::PushButton);
        EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Move"));
        EXPECT_EQ(button->childCount(), 0) << "the symbol and the text are no things of their own";
        ASSERT_TRUE(button->actionInterface());
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(clicked.count(), 1);
        screen.item->setEnabled(false);
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(clicked.count(), 1) << "a disabled button stays silent";
    }
}

TEST(Buttons, areFilledCapsules)
{
    for (const QByteArray style : {"PrimaryButtonStyle", "DestructiveButtonStyle", "GhostButtonStyle"}) {
        QmlScreen screen(style + R"( { text: "Move to Trash" })");
        screen.window.setColor(Qt::white);
        const QImage image = screen.window.grabWindow();
        const double ratio = image.devicePixelRatio();
        const auto at = [&](double x, double y) { return image.pixelColor(int(x * ratio), int(y * ratio)); };
        const double height = screen.item->height();
        EXPECT_NE(at(6, height / 2), QColor(Qt::white)) << style.constData();
        EXPECT_EQ(at(1, 1), QColor(Qt::white)) << style.constData() << ": the corner is round";
        if (style == "PrimaryButtonStyle") {
            EXPECT_GT(at(screen.item->width() - 10, height / 2).red(), at(10, height / 2).red() + 50);
        }
    }
}

TEST(CustomTextField, isAnEditableTextNamedByItsPlaceholder)
{
    QmlScreen screen(R"(CustomTextField { placeholder: "Search Apps..."; text: "abc" })");
    QAccessibleInterface *field = nullptr;
    for (QQuickItem *child : screen.item->childItems()) {
        if (auto *found = QAccessible::queryAccessibleInterface(child); found && !field)
            field = found;
    }
    ASSERT_TRUE(field);
    EXPECT_EQ(field->role(), QAccessible::EditableText);
    EXPECT_EQ(field->text(QAccessible::Name), QStringLiteral("Search Apps..."));
}

TEST(CustomTextField, wakesNothingOnceItsCursorStands)
{
    QmlScreen screen(
        R"(CustomTextField { blinkTime: 1200; width: 200; Component.onCompleted: requestFocus() })");
    const auto blinking = [&] { return screen.item->property("cursorBlinking").toBool(); };
    ASSERT_TRUE(screen.waitFor(blinking));
    ASSERT_TRUE(screen.waitFor([&] { return !blinking(); }));
    QTest::keyClick(&screen.window, Qt::Key_A);
    EXPECT_TRUE(blinking()) << "a key wakes the cursor";
    ASSERT_TRUE(screen.waitFor([&] { return !blinking(); }));

    TimerEvents timers;
    qGuiApp->installEventFilter(&timers);
    // Longer than one blink: whatever still ran would show.
    EXPECT_FALSE(screen.waitFor([&] { return timers.count > 0; },
                                2 * QGuiApplication::styleHints()->cursorFlashTime()));
    QTest::keyClick(&screen.window, Qt::Key_B);
    EXPECT_TRUE(screen.waitFor([&] { return timers.count > 0; })) << "the filter sees a blinking cursor";
}

} // namespace
} // namespace quillbay
