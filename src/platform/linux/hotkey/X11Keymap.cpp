#include "platform/linux/hotkey/X11Keymap.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <X11/keysym.h>

namespace quillbay::platform {

namespace {

std::vector<xcb_keycode_t> keycodesInColumn(const X11KeyboardMapping &mapping, int column,
                                            xcb_keysym_t keysym)
{
    std::vector<xcb_keycode_t> found;
    const auto width = std::size_t(mapping.keysymsPerKeycode);
    for (std::size_t i = std::size_t(column); i < mapping.keysyms.size(); i += width) {
        if (mapping.keysyms[i] == keysym)
            found.push_back(xcb_keycode_t(mapping.firstKeycode + i / width));
    }
    return found;
}

/// Where a US keyboard has a letter or digit; 0 for other keysyms.
xcb_keycode_t usKeycode(xcb_keysym_t keysym)
{
    constexpr std::pair<int, std::string_view> rows[] = {
        {10, "1234567890"}, {24, "qwertyuiop"}, {38, "asdfghjkl"}, {52, "zxcvbnm"}};
    for (const auto &[first, row] : rows) {
        const auto at = keysym < 0x80 ? row.find(char(keysym)) : std::string_view::npos;
        if (at != std::string_view::npos)
            return xcb_keycode_t(first + int(at));
    }
    return 0;
}

std::vector<xcb_keycode_t> mappedKeycodes(const X11KeyboardMapping &mapping, xcb_keysym_t keysym)
{
    for (int column = 0; column < mapping.keysymsPerKeycode; ++column) {
        std::vector<xcb_keycode_t> found = keycodesInColumn(mapping, column, keysym);
        if (!found.empty())
            return found;
    }
    return {};
}

} // namespace

xcb_keysym_t x11Keysym(Qt::Key key)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return xcb_keysym_t(XK_a + (key - Qt::Key_A));
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return xcb_keysym_t(XK_0 + (key - Qt::Key_0));
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return xcb_keysym_t(XK_F1 + (key - Qt::Key_F1));
    return 0;
}

std::uint16_t x11Modifiers(Qt::KeyboardModifiers modifiers)
{
    std::uint16_t mask = 0;
    if (modifiers & Qt::ShiftModifier)
        mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        mask |= XCB_MOD_MASK_CONTROL;
    if (modifiers & Qt::AltModifier)
        mask |= XCB_MOD_MASK_1;
    if (modifiers & Qt::MetaModifier)
        mask |= XCB_MOD_MASK_4;
    return mask;
}

std::vector<xcb_keycode_t> x11Keycodes(const X11KeyboardMapping &mapping, xcb_keysym_t keysym)
{
    std::vector<xcb_keycode_t> found = mappedKeycodes(mapping, keysym);
    const xcb_keycode_t us = usKeycode(keysym);
    if (found.empty() && us != 0)
        found.push_back(us);
    return found;
}

std::uint16_t x11NumLockMask(const X11KeyboardMapping &mapping, const X11ModifierMapping &modifiers)
{
    const std::vector<xcb_keycode_t> numLock = mappedKeycodes(mapping, XK_Num_Lock);
    for (std::size_t i = 0; i < modifiers.keycodes.size(); ++i) {
        const xcb_keycode_t code = modifiers.keycodes[i];
        if (code != 0 && std::find(numLock.begin(), numLock.end(), code) != numLock.end())
            return std::uint16_t(1u << (i / std::size_t(modifiers.keycodesPerModifier)));
    }
    return 0;
}

} // namespace quillbay::platform
