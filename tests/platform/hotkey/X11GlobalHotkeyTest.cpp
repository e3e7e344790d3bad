#include "platform/hotkey/PrivateDisplay.h"
#include "platform/linux/hotkey/ChooseGlobalHotkey.h"
#include "platform/none/NoDesktop.h"
#include "support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

using testing::PrivateDisplay;
using testing::TestProgram;

constexpr std::uint16_t controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
constexpr xcb_keycode_t usN = 57;
constexpr xcb_keycode_t dvorakN = 46;
const QString typed = QStringLiteral("typed ");
const QString focused = QStringLiteral("focused");
const QString activated = QStringLiteral("activated");
const QString forever = QStringLiteral("600000");

/// One window of another program, in front with the keyboard, and one program with the hotkey.
class X11GlobalHotkeyTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_display = new PrivateDisplay; }
    static void TearDownTestSuite()
    {
        delete s_display;
        s_display = nullptr;
    }

    X11GlobalHotkeyTest() { xdotool("mousemove 320 240"); }

    static std::unique_ptr<TestProgram> start(const QStringList &arguments)
    {
        return std::make_unique<TestProgram>(QStringLiteral(HOTKEY_PROBE), arguments,
                                             s_display->environment());
    }
    void startOther()
    {
        m_other = start({QStringLiteral("--shown")});
        ASSERT_TRUE(m_other->waitFor(focused));
    }
    void startOurs(const QStringList &arguments = {})
    {
        m_ours = start(QStringList(QStringLiteral("--hotkey")) + arguments);
        ASSERT_TRUE(m_ours->waitFor(QStringLiteral("registered X11 grab: Ctrl+Alt+N")));
    }
    static void xdotool(const char *commands) { s_display->xdotool(QString::fromLatin1(commands)); }

    static bool becomesFree(xcb_keycode_t key, std::uint16_t modifiers = controlAlt)
    {
        return QTest::qWaitFor([&] { return s_display->isFree(key, modifiers); }, 20000);
    }

    static QString textOf(TestProgram &program)
    {
        QString text;
        for (const QString &line : program.lines()) {
            if (line.startsWith(typed))
                text += line.mid(typed.size());
        }
        return text;
    }
    static bool waitForText(TestProgram &program, const QString &text)
    {
        return program.waitUntil([&] { return textOf(program).size() >= text.size(); }) &&
               textOf(program) == text;
    }

    static PrivateDisplay *s_display;
    std::unique_ptr<TestProgram> m_other;
    std::unique_ptr<TestProgram> m_ours;
};

PrivateDisplay *X11GlobalHotkeyTest::s_display = nullptr;

TEST_F(X11GlobalHotkeyTest, WhatIsTypedRightAfterThePressReachesTheWindow)
{
    ASSERT_NO_FATAL_FAILURE(startOther());
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--hold-limit"), forever}));
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        m_other->forget();
        xdotool("key --delay 0 ctrl+alt+n type --delay 0 fire");
        EXPECT_TRUE(waitForText(*m_ours, QStringLiteral("fire"))) << qPrintable(textOf(*m_ours));
        EXPECT_EQ(m_ours->count(activated), 1);
        EXPECT_EQ(textOf(*m_other), QString());
        ASSERT_TRUE(m_other->waitFor(QStringLiteral("left")));
        m_other->forget();
        m_ours->send("hide");
        ASSERT_TRUE(m_other->waitFor(focused));
        m_ours->forget();
    }
}

TEST_F(X11GlobalHotkeyTest, AWindowThatHasTheKeyboardKeepsIt)
{
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--shown"), QStringLiteral("--hold-limit"), forever}));
    ASSERT_TRUE(m_ours->waitFor(focused));
    xdotool("key --delay 0 ctrl+alt+n key --delay 0 ctrl+alt+n type --delay 0 ab");
    EXPECT_TRUE(waitForText(*m_ours, QStringLiteral("ab"))) << qPrintable(textOf(*m_ours));
    EXPECT_EQ(m_ours->count(activated), 2);
    EXPECT_EQ(m_ours->count(QStringLiteral("hotkey in the window")), 0);
}

TEST_F(X11GlobalHotkeyTest, AWindowThatHasTheKeyboardDoesNotLoseItToAHeldKey)
{
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--shown"), QStringLiteral("--hold-limit"), forever}));
    ASSERT_TRUE(m_ours->waitFor(focused));
    xdotool("keydown ctrl keydown alt keydown n");
    EXPECT_TRUE(m_ours->waitFor(QStringLiteral("key event"), 20));
    xdotool("keyup n keyup alt keyup ctrl type a");
    EXPECT_TRUE(waitForText(*m_ours, QStringLiteral("a"))) << qPrintable(textOf(*m_ours));
    EXPECT_EQ(m_ours->count(QStringLiteral("left")), 0);
    EXPECT_EQ(m_ours->count(activated), 1);
    EXPECT_EQ(m_ours->count(QStringLiteral("hotkey in the window")), 0);
}

TEST_F(X11GlobalHotkeyTest, PressesWhileKeysAreHeldBackCountOneByOne)
{
    ASSERT_NO_FATAL_FAILURE(startOther());
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--hold-limit"), forever}));
    xdotool("key --delay 0 ctrl+alt+n key --delay 0 ctrl+alt+n key --delay 0 ctrl+alt+n type --delay 0 ok");
    EXPECT_TRUE(waitForText(*m_ours, QStringLiteral("ok"))) << qPrintable(textOf(*m_ours));
    EXPECT_EQ(m_ours->count(activated), 3);
    EXPECT_EQ(textOf(*m_other), QString());
}

TEST_F(X11GlobalHotkeyTest, AHeldKeyIsOnePress)
{
    ASSERT_NO_FATAL_FAILURE(startOther());
    ASSERT_NO_FATAL_FAILURE(startOurs());
    xdotool("keydown ctrl keydown alt keydown n");
    EXPECT_TRUE(m_ours->waitFor(QStringLiteral("key event"), 20));
    EXPECT_EQ(m_ours->count(activated), 1);
    EXPECT_EQ(m_ours->count(QStringLiteral("left")), 0);
    // Another key while it is still down belongs to the window.
    xdotool("keyup ctrl keyup alt key f keyup n key --delay 0 ctrl+alt+n type z");
    EXPECT_TRUE(waitForText(*m_ours, QStringLiteral("fz"))) << qPrintable(textOf(*m_ours));
    EXPECT_EQ(m_ours->count(activated), 2);
    EXPECT_EQ(m_ours->count(QStringLiteral("hotkey in the window")), 0);
}

TEST_F(X11GlobalHotkeyTest, AHeldKeyIsOnePressAlsoWithoutAWindow)
{
    ASSERT_NO_FATAL_FAILURE(
        startOurs({QStringLiteral("--deaf"), QStringLiteral("--hold-limit"), QStringLiteral("0")}));
    xdotool("keydown ctrl keydown alt keydown n");
    EXPECT_TRUE(m_ours->waitFor(QStringLiteral("key event"), 20));
    xdotool("keyup n keyup ctrl keyup alt");
    EXPECT_EQ(m_ours->count(activated), 1);
    xdotool("key ctrl+alt+n");
    EXPECT_TRUE(m_ours->waitFor(activated, 2));
}

TEST_F(X11GlobalHotkeyTest, KeysGoBackWhereTheyWereIfNoWindowComes)
{
    ASSERT_NO_FATAL_FAILURE(startOther());
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--deaf")}));
    xdotool("key --delay 0 ctrl+alt+n type --delay 0 fire");
    EXPECT_TRUE(waitForText(*m_other, QStringLiteral("fire"))) << qPrintable(textOf(*m_other));
    EXPECT_EQ(m_ours->count(activated), 1);
}

TEST_F(X11GlobalHotkeyTest, KeysAreHeldBackButNotThePointerAndFreedByTheEndOfTheProgram)
{
    ASSERT_NO_FATAL_FAILURE(startOther());
    ASSERT_NO_FATAL_FAILURE(startOurs({QStringLiteral("--deaf"), QStringLiteral("--hold-limit"), forever}));
    xdotool("key --delay 0 ctrl+alt+n type --delay 0 fire");
    ASSERT_TRUE(m_ours->waitFor(activated));
    xdotool("click 1");
    EXPECT_TRUE(m_other->waitFor(QStringLiteral("clicked")));
    EXPECT_EQ(textOf(*m_other), QString());
    m_ours->kill();
    EXPECT_TRUE(waitForText(*m_other, QStringLiteral("fire"))) << qPrintable(textOf(*m_other));
}

TEST_F(X11GlobalHotkeyTest, WorksWithCapsLockAndNumLock)
{
    ASSERT_NO_FATAL_FAILURE(
        startOurs({QStringLiteral("--deaf"), QStringLiteral("--hold-limit"), QStringLiteral("0")}));
    int presses = 0;
    for (const char *lock : {"key Caps_Lock", "key Num_Lock", "key Caps_Lock", "key Num_Lock"}) {
        xdotool(lock);
        xdotool("key ctrl+alt+n");
        EXPECT_TRUE(m_ours->waitFor(activated, ++presses)) << lock;
    }
}

TEST_F(X11GlobalHotkeyTest, AKeyThatAnotherProgramHoldsIsRefusedWhole)
{
    const std::uint16_t capsLock = XCB_MOD_MASK_LOCK;
    const std::uint16_t numLock = XCB_MOD_MASK_2;
    ASSERT_TRUE(s_display->grab(usN, controlAlt | capsLock));
    m_ours = start({QStringLiteral("--hotkey")});
    EXPECT_TRUE(m_ours->waitFor(QStringLiteral("failed another program holds Ctrl+Alt+N")));
    EXPECT_EQ(m_ours->count(QStringLiteral("registered")), 0);
    s_display->ungrab(usN, controlAlt | capsLock);
    for (const int locks : {0, int(capsLock), int(numLock), capsLock | numLock})
        EXPECT_TRUE(becomesFree(usN, std::uint16_t(controlAlt | locks))) << locks;
}

TEST_F(X11GlobalHotkeyTest, FollowsTheKeyboardLayout)
{
    ASSERT_NO_FATAL_FAILURE(
        startOurs({QStringLiteral("--deaf"), QStringLiteral("--hold-limit"), QStringLiteral("0")}));
    const auto pressUntilHeard = [&](const QString &keys) {
        EXPECT_EQ(m_ours->count(QStringLiteral("failed")), 0);
        m_ours->forget();
        return m_ours->waitUntil([&] {
            s_display->xdotool(QStringLiteral("key ctrl+alt+") + keys);
            return m_ours->count(activated) > 0;
        });
    };
    const QString setLayout = QStringLiteral("setxkbmap");
    EXPECT_FALSE(s_display->isFree(usN, controlAlt));
    s_display->run(setLayout, {QStringLiteral("dvorak")});
    EXPECT_TRUE(pressUntilHeard(QString::number(dvorakN)));
    EXPECT_TRUE(becomesFree(usN));
    s_display->run(setLayout, {QStringLiteral("ru")});
    EXPECT_TRUE(pressUntilHeard(QString::number(usN))) << "a layout without the letter";
    EXPECT_TRUE(becomesFree(dvorakN));
    s_display->run(setLayout, {QStringLiteral("us")});
    EXPECT_TRUE(pressUntilHeard(QStringLiteral("n")));
    EXPECT_EQ(m_ours->count(QStringLiteral("registered")) + m_ours->count(QStringLiteral("failed")), 0);
}

TEST(ChooseGlobalHotkeyTest, WithoutXAndWaylandThereIsNone)
{
    const std::unique_ptr<GlobalHotkey> hotkey = chooseGlobalHotkey(QDBusConnection(QString()));
    EXPECT_FALSE(hotkey->isAvailable());
    QSignalSpy failed(hotkey.get(), &GlobalHotkey::failed);
    hotkey->registerKey(QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_N));
    EXPECT_EQ(failed.count(), 0) << "never before the call returns";
    EXPECT_TRUE(QTest::qWaitFor([&] { return failed.count() == 1; }));
}

} // namespace
} // namespace quillbay::platform
