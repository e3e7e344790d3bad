#include "platform/linux/colors/ChooseColorSampler.h"

#include "platform/linux/colors/FirstColorSampler.h"
#include "platform/linux/colors/KWinColorSampler.h"
#include "platform/linux/colors/PortalColorSampler.h"
#include "platform/linux/colors/X11ColorSampler.h"
#include "platform/none/NoColorSampler.h"

#include <QGuiApplication>

namespace quillbay::platform {

std::unique_ptr<ColorSampler> chooseColorSampler(const QDBusConnection &sessionBus)
{
    std::vector<std::unique_ptr<ColorSampler>> ways;
    ways.push_back(std::make_unique<PortalColorSampler>(sessionBus));
    const QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    if (desktops.contains("KDE"))
        ways.push_back(std::make_unique<KWinColorSampler>(sessionBus));
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        ways.push_back(std::make_unique<X11ColorSampler>());
    ways.push_back(std::make_unique<NoColorSampler>());
    return std::make_unique<FirstColorSampler>(std::move(ways));
}

} // namespace quillbay::platform
