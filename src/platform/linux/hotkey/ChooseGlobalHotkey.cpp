#include "platform/linux/hotkey/ChooseGlobalHotkey.h"

#include "platform/linux/hotkey/PortalGlobalHotkey.h"
#include "platform/linux/hotkey/X11GlobalHotkey.h"
#include "platform/none/NoDesktop.h"

#include <QGuiApplication>

namespace quillbay::platform {

std::unique_ptr<GlobalHotkey> chooseGlobalHotkey(const QDBusConnection &sessionBus)
{
    auto grab = std::make_unique<X11GlobalHotkey>();
    if (grab->isAvailable())
        return grab;
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        return std::make_unique<PortalGlobalHotkey>(sessionBus);
    return std::make_unique<NoGlobalHotkey>();
}

} // namespace quillbay::platform
