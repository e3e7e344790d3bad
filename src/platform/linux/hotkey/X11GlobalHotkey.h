#pragma once

#include "platform/GlobalHotkey.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace quillbay::platform {

/// The key grabbed on the root window of an X server, with every state of CapsLock and NumLock.
///
/// The grab is synchronous: with the press the server holds back all further keys (the pointer goes on) until
/// they are let go, and they then go to the window that has the keyboard by that time. So what is typed right
/// after the key is not lost to the program that was active before. They are let go when the server gives the
/// focus to a window of this program (a `keyboardTaken` that comes earlier waits for that), at once if one
/// has it already, after `holdLimit` at the latest, and by the server itself should this process end.
///
/// A key held down counts as one press. After a change of the keyboard layout the key is grabbed anew where
/// it is then; should another program hold it there, `failed` follows although `registered` came earlier.
class X11GlobalHotkey final : public GlobalHotkey, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Longer than any window takes to come forward; short enough that nobody takes the keyboard for broken.
    static constexpr std::chrono::milliseconds defaultHoldLimit{400};

    explicit X11GlobalHotkey(std::chrono::milliseconds holdLimit = defaultHoldLimit,
                             QObject *parent = nullptr);
    ~X11GlobalHotkey() override;

    bool isAvailable() const override;
    void registerKey(QKeyCombination key) override;
    void keyboardTaken() override;

private:
    struct Grab
    {
        xcb_keycode_t keycode;
        std::uint16_t modifiers;
        bool operator==(const Grab &) const = default;
    };
    /// The last press that counted; `keycode` is 0 once another key has followed its release.
    struct LastPress
    {
        xcb_keycode_t keycode = 0;
        bool isDown = false;
        xcb_timestamp_t releaseTime = XCB_CURRENT_TIME;
    };

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    bool pressed(const xcb_key_press_event_t &press);
    bool takeAsRepeat(const xcb_key_press_event_t &press);
    void announce(bool hadFocus);
    bool released(const xcb_key_release_event_t &release);
    void focusedIn(const xcb_focus_in_event_t &focusIn);
    void mappingChanged();

    void start();
    bool grabAll(const std::vector<Grab> &grabs);
    void releaseGrabs();
    bool hasFocus() const;
    void letKeysGo();

    QKeyCombination m_key;
    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::uint8_t m_xkbEvent = 0;
    std::vector<Grab> m_grabs;
    bool m_isRegrabDue = false;
    LastPress m_last;
    QTimer m_holdGuard; ///< Active while the server holds keys back for this program.
};

} // namespace quillbay::platform
