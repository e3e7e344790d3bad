#include "platform/linux/desktop/WaylandWindowEffects.h"

#include <QGuiApplication>

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
    if (!activationToken.isEmpty())
        qputenv(tokenVariable, activationToken.toUtf8());
    showInFront(*window);
    qunsetenv(tokenVariable);
}

} // namespace quillbay::platform
