#include "platform/Platform.h"
#include "platform/linux/desktop/DBusApplicationService.h"
#include "platform/linux/desktop/LinuxWindowEffects.h"
#include "platform/linux/desktop/PortalAppearance.h"
#include "platform/linux/desktop/SessionBus.h"
#include "platform/none/NoApplications.h"
#include "platform/none/NoDesktop.h"

namespace quillbay::platform {

std::unique_ptr<ApplicationService> createApplicationService()
{
    return std::make_unique<DBusApplicationService>(sessionBus());
}

Platform createPlatform()
{
    Platform platform;
    platform.applications = std::make_unique<NoApplicationSource>();
    platform.icons = std::make_unique<NoIconSource>();
    platform.launcher = std::make_unique<NoApplicationLauncher>();
    platform.folderWatch = std::make_unique<NoFolderWatch>();
    platform.appearance = std::make_unique<PortalAppearance>(sessionBus());
    platform.windowEffects = chooseWindowEffects();
    platform.hotkey = std::make_unique<NoGlobalHotkey>();
    return platform;
}

} // namespace quillbay::platform
