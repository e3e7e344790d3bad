#pragma once

#include "support/XServer.h"

#include <QStringList>

#include <cstdint>

#include <xcb/xcb.h>

namespace quillbay::testing {

/// An X server of the test's own with a window manager, and a client of it: Xvfb and openbox, which end with
/// this.
class PrivateDisplay
{
public:
    PrivateDisplay();
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay &) = delete;
    PrivateDisplay &operator=(const PrivateDisplay &) = delete;

    QProcessEnvironment environment() const { return m_server.environment(); }

    /// Runs a tool of the display to its end.
    void run(const QString &program, const QStringList &arguments) const;
    void xdotool(const QString &commands) const;

    /// Takes the key for the test's own client; false if another client has it.
    bool grab(xcb_keycode_t key, std::uint16_t modifiers) const;
    void ungrab(xcb_keycode_t key, std::uint16_t modifiers) const;
    /// Whether nobody but the test's own client has the key; takes it from that.
    bool isFree(xcb_keycode_t key, std::uint16_t modifiers) const;

private:
    XServer m_server;
    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace quillbay::testing
