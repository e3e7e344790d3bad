#pragma once

#include "support/XServer.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

#include <xcb/xcb.h>

namespace quillbay::testing {

/// An X server whose screen, 1000 by 800, has a colour of its own at each pixel.
class PaintedScreen
{
public:
    PaintedScreen();
    ~PaintedScreen();
    PaintedScreen(const PaintedScreen &) = delete;
    PaintedScreen &operator=(const PaintedScreen &) = delete;

    static QColor colorAt(QPoint place);

    QByteArray display() const { return m_server.display(); }
    /// Input as a hand makes it: the words of one xdotool call.
    void xdotool(const char *words) const;
    QPoint pointer() const;

    /// Takes the pointer, as an open menu does.
    bool grabPointer() const;
    void letGo() const;

    /// Where the windows are that show; with the test's own left out.
    QList<QRect> windows() const;
    QImage picture(const QRect &area) const;

private:
    XServer m_server;
    xcb_connection_t *m_connection;
    xcb_screen_t *m_screen;
    xcb_window_t m_window;
};

} // namespace quillbay::testing
