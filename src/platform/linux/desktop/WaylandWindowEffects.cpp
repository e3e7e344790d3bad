#include "platform/linux/desktop/WaylandWindowEffects.h"

#include <QGuiApplication>
#include <QWindow>

namespace quillbay::platform {

namespace {

constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";

} // namespace

bool WaylandWindowEffects::isAvailable()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void WaylandWindowEffects::setBlurBehind(QWindow *, const QRegion &) {}

void WaylandWindowEffects::bringToFront(QWindow *window, const QString &activationToken)
{
    if (!window)
        return;
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->setVisible(true); // show() would make a maximised window a normal one
    window->raise();
    if (!activationToken.isEmpty())
        qputenv(tokenVariable, activationToken.toUtf8());
    window->requestActivate();
    qunsetenv(tokenVariable);
}

} // namespace quillbay::platform
