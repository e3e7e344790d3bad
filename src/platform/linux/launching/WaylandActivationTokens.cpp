#include "platform/linux/launching/WaylandActivationTokens.h"

#include "platform/linux/launching/XdgActivation.h"

#include <QGuiApplication>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <utility>

namespace quillbay::platform {

namespace {

wl_surface *surfaceOf(QWindow *window)
{
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    if (!window || !window->handle() || !native)
        return nullptr;
    return static_cast<wl_surface *>(native->nativeResourceForWindow("surface", window));
}

} // namespace

WaylandActivationTokens::WaylandActivationTokens()
{
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    if (!native || !QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return;
    auto *display = static_cast<wl_display *>(native->nativeResourceForIntegration("wl_display"));
    if (display)
        m_protocol = std::make_unique<XdgActivation>(display);
}

WaylandActivationTokens::~WaylandActivationTokens() = default;

bool WaylandActivationTokens::isAvailable() const
{
    return m_protocol != nullptr;
}

void WaylandActivationTokens::request(const ActivationTokenRequest &request, Answer answer)
{
    if (!m_protocol) {
        answer({});
        return;
    }
    m_protocol->request(surfaceOf(request.window), request.identifier,
                        [answer = std::move(answer)](const QString &token) {
                            answer({token, token});
                        });
}

} // namespace quillbay::platform
