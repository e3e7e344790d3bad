#include "tools/RulerWindow.h"
#include "ui/ScreenTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>

namespace quillbay::testing {
namespace {

QString copied()
{
    return QGuiApplication::clipboard()->text();
}

QStringList measured(std::initializer_list<const char *> sizes)
{
    QStringList texts;
    for (const char *size : sizes)
        texts.append(QString::fromUtf8(size) + QStringLiteral(" px"));
    return texts;
}

/// A popover over a button that had the keyboard.
class PickerToolsTest : public ScreenTest
{
protected:
    void open(const QByteArray &popover)
    {
        show("FocusScope { property alias panel: popover\n"
             "PushButton { id: button; text: 'Behind'; focus: true; width: 120 }\n" +
             popover + " { id: popover; parent: button } }");
        screen->forceActiveFocus();
        QMetaObject::invokeMethod(panel(), "open");
        ASSERT_TRUE(waitFor([this] { return panel()->property("opened").toBool(); }));
    }
    QObject *panel() const { return screen->property("panel").value<QObject *>(); }
    bool hasKeyboard(const char *name)
    {
        return waitFor([&] {
            const QQuickItem *item = find(name);
            return item && (item->hasActiveFocus() || item->isAncestorOf(window->activeFocusItem()));
        });
    }
    RulerWindow *ruler() { return tools.rulerManager().window(); }
    QStringList measurements() { return tools.storage().recentMeasurements(); }

    /// The size that the ruler's window gets from outside, and the pointer that enters it afterwards.
    void resizeRulerByHand(QSize size)
    {
        ruler()->resize(size);
        // Its content has the size once the window has been told of it.
        ASSERT_TRUE(waitFor([&] { return ruler()->rootObject()->size() == QSizeF(size); }));
    }
    void enterRuler()
    {
        QMouseEvent event(QEvent::MouseMove, {5, 5}, {5, 5}, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(ruler(), &event);
    }
};

TEST_F(PickerToolsTest, AColourIsPickedShownAndListed)
{
    ASSERT_NO_FATAL_FAILURE(open("ColorPickerPopoverView"));
    EXPECT_TRUE(hasKeyboard("Pick Color"));
    EXPECT_FALSE(find("Recent Colors"));
    press(Qt::Key_Return);
    library.fakes.colorSampler->pick(1, 0.5, 0);
    EXPECT_TRUE(await("HEX Copied!"));
    EXPECT_EQ(shown(QAccessible::StaticText).last(), QStringLiteral("#FF7F00"));
    EXPECT_EQ(copied(), QStringLiteral("#FF7F00"));

    click("Pick Color");
    library.fakes.colorSampler->pick(0, 0, 1);
    EXPECT_EQ(shown(QAccessible::RadioButton),
              (QStringList{QStringLiteral("#0000FF"), QStringLiteral("#FF7F00")}));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(copied(), QStringLiteral("#FF7F00"));
    click("Clear Recent Colors");
    EXPECT_TRUE(waitFor([this] { return !find("Recent Colors"); }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(hasKeyboard("Behind"));
}

TEST_F(PickerToolsTest, AnOpenListIsThatOfTheWorkspaceThatIsOn)
{
    tools.storage().setRecentColors({QStringLiteral("#010203")});
    tools.storage().saveRecentColors();
    tools.storage().setRecentMeasurements(measured({"600 × 200"}));
    tools.storage().saveRecentMeasurements();
    const QUuid first = library.workspaces->activeWorkspaceID();
    ASSERT_NO_FATAL_FAILURE(open("ColorPickerPopoverView"));
    EXPECT_TRUE(await("#010203"));
    library.workspaces->createWorkspace(QStringLiteral("Other"), {}, {});
    EXPECT_TRUE(waitFor([this] { return !find("Recent Colors"); }));
    press(Qt::Key_Escape);
    ASSERT_TRUE(hasKeyboard("Behind"));

    ASSERT_NO_FATAL_FAILURE(open("MeasurePopoverView"));
    EXPECT_FALSE(find("Recent Measurements"));
    library.workspaces->setActiveWorkspaceID(first);
    EXPECT_TRUE(await("600 × 200 px"));
}

TEST_F(PickerToolsTest, TheRulerOpensOnceAndClosesFromEitherEnd)
{
    ASSERT_NO_FATAL_FAILURE(open("MeasurePopoverView"));
    EXPECT_TRUE(hasKeyboard("Open Screen Ruler"));
    press(Qt::Key_Return);
    ASSERT_TRUE(ruler());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ruler()));
    EXPECT_EQ(measurements(), measured({"400 × 300"}));
    const QSize monitor = window->screen()->size();
    EXPECT_EQ(ruler()->position(), QPoint((monitor.width() - 400) / 2, (monitor.height() - 300) / 2));
    const RulerWindow *first = ruler();
    tools.rulerManager().showRuler();
    EXPECT_EQ(ruler(), first);
    EXPECT_EQ(measurements().size(), 1);
    click("Close Ruler");
    EXPECT_FALSE(ruler());

    click("Open Screen Ruler");
    ASSERT_TRUE(ruler());
    ruler()->close();
    EXPECT_TRUE(waitFor([this] { return !ruler(); })) << "by a way of the desktop's";
    EXPECT_TRUE(await("Open Screen Ruler"));
    EXPECT_EQ(measurements(), measured({"400 × 300"}));
}

TEST_F(PickerToolsTest, ADesktopThatLetsNothingThroughOrPlacesWindowsItselfHasARulerToo)
{
    effects.showsThrough = false;
    effects.places = false;
    show("Item {}");
    ::testing::internal::CaptureStdout();
    tools.rulerManager().showRuler();
    EXPECT_TRUE(QString::fromStdString(::testing::internal::GetCapturedStdout())
                    .startsWith(QStringLiteral("Ruler: this desktop places windows itself")));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ruler()));
    const auto isThere = [this](int x, int y) { return ruler()->mask().contains(QPoint(x, y)); };
    EXPECT_TRUE(isThere(5, 5) && isThere(200, 60)) << "the scale and the figures";
    EXPECT_FALSE(isThere(60, 60) || isThere(350, 200)) << "what is to be measured";
    resizeRulerByHand({600, 500});
    EXPECT_TRUE(isThere(595, 495) && isThere(300, 60));
    EXPECT_FALSE(isThere(390, 290));
    enterRuler();
    EXPECT_EQ(measurements(), measured({"600 × 500", "400 × 300"}));
}

TEST_F(PickerToolsTest, OnlyTheEndOfAResizeIsRecorded)
{
    ASSERT_NO_FATAL_FAILURE(open("MeasurePopoverView"));
    click("Open Screen Ruler");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ruler()));
    enterRuler();
    EXPECT_EQ(measurements().size(), 1) << "nothing was resized";
    resizeRulerByHand({450, 320});
    resizeRulerByHand({500, 350});
    EXPECT_EQ(measurements().size(), 1) << "it may go on";
    enterRuler();
    enterRuler();
    EXPECT_EQ(measurements(), measured({"500 × 350", "400 × 300"}));
    ruler()->setPosition(ruler()->position() + QPoint(20, 20));
    enterRuler();
    EXPECT_EQ(measurements().size(), 2) << "a move measures nothing";
    resizeRulerByHand({400, 300});
    enterRuler();
    EXPECT_EQ(measurements(), measured({"400 × 300", "500 × 350"}));
    for (int width = 601; width <= 610; ++width) {
        resizeRulerByHand({width, 300});
        enterRuler();
    }
    EXPECT_EQ(measurements().size(), 10);
    EXPECT_EQ(measurements().first(), QString::fromUtf8("610 × 300 px"));
}

TEST_F(PickerToolsTest, AListedSizeIsCopiedAndGivenToTheRulerWhereItOpens)
{
    tools.storage().setRecentMeasurements(measured({"600 × 200", "300 × 250"}));
    tools.storage().saveRecentMeasurements();
    ASSERT_NO_FATAL_FAILURE(open("MeasurePopoverView"));
    click("300 × 250 px");
    EXPECT_EQ(copied(), QString::fromUtf8("300 × 250 px"));
    EXPECT_EQ(measurements(), measured({"600 × 200", "300 × 250"})) << "no ruler, no measuring";

    click("Open Screen Ruler");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ruler()));
    const QPoint corner = ruler()->position();
    click("600 × 200 px");
    EXPECT_TRUE(waitFor([this] { return ruler()->size() == QSize(600, 200); }));
    EXPECT_EQ(ruler()->position(), corner);
    enterRuler();
    EXPECT_EQ(measurements(), measured({"600 × 200", "400 × 300", "300 × 250"}));
    window->requestActivate(); // the ruler took the keyboard
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    press(Qt::Key_Tab);
    EXPECT_TRUE(hasKeyboard("Clear Recent Measurements") || hasKeyboard("600 × 200 px"));
    tools.rulerManager().resizeRuler(10, 10);
    EXPECT_TRUE(waitFor([this] { return ruler()->size() == QSize(200, 160); }));
    click("Clear Recent Measurements");
    EXPECT_TRUE(measurements().isEmpty());
}

TEST_F(PickerToolsTest, TheRulerShowsItsSizeWhileItGrows)
{
    show("Item {}");
    tools.rulerManager().showRuler();
    const auto reads = [this](const char *name) {
        const auto texts = ruler()->findChildren<QQuickItem *>();
        return std::any_of(texts.begin(), texts.end(), [name](const QQuickItem *item) {
            QAccessibleInterface *node =
                QAccessible::queryAccessibleInterface(const_cast<QQuickItem *>(item));
            return node && node->text(QAccessible::Name) == QString::fromUtf8(name);
        });
    };
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ruler()));
    EXPECT_TRUE(waitFor([&] { return reads("Width 400 px") && reads("Height 300 px"); }));
    resizeRulerByHand({517, 333});
    EXPECT_TRUE(waitFor([&] { return reads("Width 517 px") && reads("Height 333 px"); }));
    const QImage picture = ruler()->grabWindow();
    // On the first row of pixels below the outline: a tick every 10, and nothing between.
    const auto strength = [&](int x) {
        const QColor color = picture.pixelColor(x, 6);
        return color.blue() * color.alpha() / 255; // some renderers give no alpha
    };
    EXPECT_GT(strength(100), strength(105) + 100);
    EXPECT_GT(strength(150), strength(155) + 60);
    EXPECT_EQ(strength(110), strength(115)) << "a short one ends above";
}

TEST_F(PickerToolsTest, AnEdgeKeepsNoPressWhoseReleaseTheDesktopHasTaken)
{
    show("Item { property int resized\n"
         "PushButton { text: 'Inside'; x: 100; y: 100; onClicked: text = 'Pressed' }\n"
         "WindowEdges { anchors.fill: parent\n"
         "window: QtObject { function startSystemResize(edges) { resized = edges; return true } } } }");
    QTest::mousePress(window.get(), Qt::LeftButton, {}, {1, 300});
    EXPECT_EQ(screen->property("resized").toInt(), int(Qt::LeftEdge));
    QCoreApplication::processEvents();
    click("Inside");
    EXPECT_TRUE(await("Pressed"));
}

TEST_F(PickerToolsTest, WhatIsTypedIsACodeToCopy)
{
    ASSERT_NO_FATAL_FAILURE(open("QRGeneratorPopoverView"));
    EXPECT_TRUE(hasKeyboard("Type URL or text..."));
    EXPECT_TRUE(await("Enter text above to preview QR"));
    type("https://example.org");
    EXPECT_TRUE(await("QR Code"));
    EXPECT_FALSE(find("Enter text above to preview QR"));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(await("QR Copied!"));
    EXPECT_FALSE(QGuiApplication::clipboard()->image().isNull());

    press(Qt::Key_Backtab);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Backspace);
    EXPECT_TRUE(await("Enter text above to preview QR"));
    EXPECT_FALSE(find("QR Code"));
}

TEST_F(PickerToolsTest, ATextTooLongForACodeShowsThePlaceholder)
{
    ASSERT_NO_FATAL_FAILURE(open("QRGeneratorPopoverView"));
    QGuiApplication::clipboard()->setText(QString(2000, QLatin1Char('a')));
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(await("Enter text above to preview QR"));
    EXPECT_FALSE(find("QR Code"));
    press(Qt::Key_A, Qt::ControlModifier);
    type("a");
    EXPECT_TRUE(await("QR Code"));
}

} // namespace
} // namespace quillbay::testing
