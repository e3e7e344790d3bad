#pragma once

#include "platform/ColorSampler.h"
#include "platform/linux/colors/Loupe.h"
#include "platform/linux/colors/X11ColorSampler.h"
#include "platform/linux/colors/X11PixelFormat.h"

#include <QMetaType>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace quillbay::platform {

/// How replies of the X server are let go.
struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};

/// One sampling under X11, from grabbing the pointer to letting it go. It is over once `finished` is sent,
/// and everything that it holds in the server goes when this object does.
///
/// The screen is taken down once, before the loupe shows, and colours are those of that picture: a loupe
/// would stand in its own way when the pointer runs into it. The picture is not waited for; what is pressed
/// before it is there is handled then. Only the few short answers of setting up are waited for.
class X11Pick final : public QObject
{
    Q_OBJECT

public:
    X11Pick(const QByteArray &display, const QList<X11Monitor> &monitors);
    ~X11Pick() override;

    void start();

Q_SIGNALS:
    /// Sent once.
    void finished(const quillbay::platform::ColorSample &sample);

private:
    void grab();
    bool grabPointer();
    bool grabKeyboard();
    void begin();
    void readKeymap();
    void pump();
    void handle(const xcb_generic_event_t &event);
    void pressed(const xcb_key_press_event_t &event);
    void released();
    void pointerAt(QPoint position);
    void movePointer(int x, int y);
    void take();
    std::uint32_t pixelAt(QPoint position) const;

    bool hasScreen();
    QImage surroundings() const;
    void moveLoupe();
    void placeLoupe(const QRect &place);
    void paintLoupe();
    const X11Monitor &monitorUnderPointer() const;
    xcb_cursor_t crosshair() const;

    void end(const ColorSample &sample);
    void fail(const char *reason);

    xcb_connection_t *m_connection;
    const xcb_screen_t *m_screen = nullptr;
    std::optional<X11PixelFormat> m_format;
    QList<X11Monitor> m_monitors; ///< The last is the whole screen.
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_retry;
    int m_triesLeft;

    xcb_keycode_t m_firstKeycode = 0;
    std::vector<xcb_keysym_t> m_keysyms; ///< Of each key without modifiers.

    QPoint m_pointer;
    std::optional<ColorSample> m_outcome;                   ///< Decided by a press, told at its release.
    bool m_pointerMoved = false;                            ///< The loupe has to follow.
    unsigned m_pixelsRequest = 0;                           ///< Sequence number; 0 when answered.
    std::unique_ptr<xcb_get_image_reply_t, Freed> m_pixels; ///< Of the whole screen.

    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_gcontext_t m_gc = XCB_NONE;
    QImage m_picture;
    bool m_isOver = false;
};

} // namespace quillbay::platform

Q_DECLARE_METATYPE(quillbay::platform::ColorSample)
