#pragma once

#include <QKeyCombination>

#include <cstdint>
#include <vector>

#include <xcb/xproto.h>

namespace quillbay::platform {

/// The keyboard mapping as the X server gives it: `keysymsPerKeycode` columns for each keycode from
/// `firstKeycode` on. Columns 0 and 1 are the first layout without and with Shift, 2 and 3 the second layout.
struct X11KeyboardMapping
{
    xcb_keycode_t firstKeycode = 8;
    int keysymsPerKeycode = 0;
    std::vector<xcb_keysym_t> keysyms;
};

/// The keys of each of the eight modifiers, Shift, Lock, Control, Mod1 to Mod5; 0 fills up.
struct X11ModifierMapping
{
    int keycodesPerModifier = 0;
    std::vector<xcb_keycode_t> keycodes;
};

/// Keysym of a letter, a digit or a function key; 0 for any other key.
xcb_keysym_t x11Keysym(Qt::Key key);

/// Shift, Control, Alt as Mod1, Meta as Mod4: where every usual layout has them.
std::uint16_t x11Modifiers(Qt::KeyboardModifiers modifiers);

/// The keys that give `keysym`, taken from the first column that has it, so that the first layout wins. A
/// layout without Latin letters gives none; then it is the key that has the letter or digit on a US keyboard.
std::vector<xcb_keycode_t> x11Keycodes(const X11KeyboardMapping &mapping, xcb_keysym_t keysym);

/// The modifier that NumLock sets; 0 where the keyboard has none.
std::uint16_t x11NumLockMask(const X11KeyboardMapping &mapping, const X11ModifierMapping &modifiers);

} // namespace quillbay::platform
