#pragma once

#include "platform/ColorSampler.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QRect>

#include <memory>

namespace quillbay::platform {

class X11Pick;

/// One of the monitors of an X display.
struct X11Monitor
{
    QRect area; ///< Device pixels of the root window.
    qreal ratio = 1;
};

/// The application's monitors.
QList<X11Monitor> x11Monitors();

/// An own picker for X11: pointer and keyboard are grabbed and a loupe goes along with the pointer.
///
/// Button 1 or Return takes the pixel under the pointer, the arrow keys move it by one pixel, button 3 or
/// Escape cancels; it ends with the release, so that nothing of it reaches a window below. Pixels are taken
/// from what is on the screen, as sRGB. Where another program holds pointer or keyboard, such as an open
/// menu, it is tried again for half a second.
///
/// It works over a connection to the X server of its own: what it grabbed and shows ends with that.
class X11ColorSampler final : public QObject, public ColorSampler
{
public:
    using Monitors = QList<X11Monitor> (*)();

    /// `display` as DISPLAY has it; null is the program's own.
    explicit X11ColorSampler(const QByteArray &display = {}, Monitors monitors = x11Monitors);
    ~X11ColorSampler() override;

    void sample(Finished finished) override;

private:
    void finish(const ColorSample &sample);

    QByteArray m_display;
    Monitors m_monitors;
    std::unique_ptr<X11Pick> m_pick; ///< Set while a sampling is open.
    Finished m_finished;
};

} // namespace quillbay::platform
