#include "platform/linux/colors/X11ColorSampler.h"

#include "platform/linux/colors/X11Pick.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace quillbay::platform {

QList<X11Monitor> x11Monitors()
{
    QList<X11Monitor> monitors;
    for (const QScreen *screen : QGuiApplication::screens()) {
        // Qt scales a screen's size and leaves its place.
        const qreal ratio = screen->devicePixelRatio();
        const QSize size(qRound(screen->geometry().width() * ratio),
                         qRound(screen->geometry().height() * ratio));
        monitors.append({QRect(screen->geometry().topLeft(), size), ratio});
    }
    return monitors;
}

X11ColorSampler::X11ColorSampler(const QByteArray &display, Monitors monitors)
    : m_display(display)
    , m_monitors(monitors)
{
}

X11ColorSampler::~X11ColorSampler() = default;

void X11ColorSampler::sample(Finished finished)
{
    if (m_finished)
        return;
    m_finished = std::move(finished);
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pick = std::make_unique<X11Pick>(m_display, m_monitors());
            // Queued: a pick must not end inside one of its own functions.
            connect(
                m_pick.get(), &X11Pick::finished, this, [this](const ColorSample &sample) { finish(sample); },
                Qt::QueuedConnection);
            m_pick->start();
        },
        Qt::QueuedConnection);
}

void X11ColorSampler::finish(const ColorSample &sample)
{
    m_pick.reset();
    std::exchange(m_finished, {})(sample);
}

} // namespace quillbay::platform
