#pragma once

#include <QByteArray>
#include <QRegion>
#include <QString>

class QWindow;

namespace quillbay::platform {

/// What the desktop can do to a window from outside its contents.
///
/// Thread: main thread.
class WindowEffects
{
public:
    virtual ~WindowEffects() = default;

    /// Whether a window may ask for its background to be blurred by the compositor now.
    virtual bool canBlurBehind() const = 0;
    /// Asks for blur behind `region` of the window, in device-independent pixels; an empty region takes it
    /// back.
    virtual void setBlurBehind(QWindow *window, const QRegion &region) = 0;

    /// Whether a program may put its own windows at a place (X11) or not (Wayland).
    virtual bool canPlaceWindows() const = 0;

    /// Whether what is behind a translucent window shows through it now. Without a compositor it is drawn
    /// over black.
    virtual bool canShowThrough() const = 0;

    /// Brings a visible window to the front with the keyboard. `activationToken` is what the caller was given
    /// for it; without one, Wayland compositors may only mark the window as asking for attention.
    virtual void bringToFront(QWindow *window, const QString &activationToken) = 0;

protected:
    /// What every desktop does of it: no longer minimised, visible, in front, active. A maximised window
    /// stays so.
    static void showInFront(QWindow &window);
};

} // namespace quillbay::platform
