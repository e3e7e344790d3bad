#include "platform/linux/hotkey/PortalShortcut.h"
#include "platform/linux/hotkey/X11Keymap.h"

#include <X11/keysym.h>
#include <gmock/gmock.h>

namespace quillbay::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Two layouts with Shift, keys 24 to 27.
// clang-format off
const X11KeyboardMapping keyboard{24, 4, {
    XK_q, XK_Q, XK_Cyrillic_shorti, XK_Cyrillic_SHORTI,
    XK_w, XK_W, XK_q, XK_Q,
    XK_e, XK_E, XK_n, XK_N,
    XK_Num_Lock, 0, XK_q, 0,
}};
// clang-format on

TEST(X11KeymapTest, TheFirstLayoutWinsAndTheUsKeyStandsIn)
{
    EXPECT_THAT(x11Keycodes(keyboard, XK_q), ElementsAre(24)) << "also in the second layout, elsewhere";
    EXPECT_THAT(x11Keycodes(keyboard, XK_n), ElementsAre(26)) << "only in the second layout";
    EXPECT_THAT(x11Keycodes(keyboard, XK_a), ElementsAre(38)) << "nowhere";
    EXPECT_THAT(x11Keycodes(keyboard, XK_F5), IsEmpty());
    EXPECT_THAT(x11Keycodes({}, XK_n), ElementsAre(57)) << "no answer from the server";
    EXPECT_THAT(x11Keycodes({}, XK_0), ElementsAre(19));
    EXPECT_THAT(x11Keycodes(keyboard, 0x01000430), IsEmpty());
}

TEST(X11KeymapTest, TranslatesKeysAndModifiers)
{
    EXPECT_EQ(x11Keysym(Qt::Key_N), xcb_keysym_t(XK_n));
    EXPECT_EQ(x11Keysym(Qt::Key_7), xcb_keysym_t(XK_7));
    EXPECT_EQ(x11Keysym(Qt::Key_F12), xcb_keysym_t(XK_F12));
    EXPECT_EQ(x11Keysym(Qt::Key_Escape), 0u);
    EXPECT_EQ(x11Modifiers(Qt::ControlModifier | Qt::AltModifier), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
    EXPECT_EQ(x11Modifiers(Qt::MetaModifier | Qt::ShiftModifier), XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT);
}

TEST(X11KeymapTest, FindsTheModifierOfNumLock)
{
    X11ModifierMapping modifiers{2, std::vector<xcb_keycode_t>(16, 0)};
    EXPECT_EQ(x11NumLockMask(keyboard, modifiers), 0);
    modifiers.keycodes[2 * 4 + 1] = 27;
    EXPECT_EQ(x11NumLockMask(keyboard, modifiers), XCB_MOD_MASK_2);
    EXPECT_EQ(x11NumLockMask({}, modifiers), 0);
}

TEST(PortalShortcutTest, WritesTriggersAsTheDesktopsReadThem)
{
    const auto trigger = [](Qt::KeyboardModifiers modifiers, Qt::Key key) {
        return portalTrigger(QKeyCombination(modifiers, key));
    };
    EXPECT_EQ(trigger(Qt::ControlModifier | Qt::AltModifier, Qt::Key_N), QStringLiteral("CTRL+ALT+n"));
    EXPECT_EQ(trigger(Qt::MetaModifier | Qt::ShiftModifier, Qt::Key_F5), QStringLiteral("SHIFT+LOGO+F5"));
    EXPECT_EQ(trigger(Qt::AltModifier, Qt::Key_3), QStringLiteral("ALT+3"));
    EXPECT_TRUE(trigger(Qt::ControlModifier, Qt::Key_Escape).isNull());
}

} // namespace
} // namespace quillbay::platform
