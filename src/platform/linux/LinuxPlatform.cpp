#include "platform/GlobalHotkey.h"
#include "platform/Platform.h"
#include "platform/WindowEffects.h"
#include "platform/linux/applications/LinuxApplicationSource.h"
#include "platform/linux/biometrics/FprintdBiometrics.h"
#include "platform/linux/colors/ChooseColorSampler.h"
#include "platform/linux/desktop/DBusApplicationService.h"
#include "platform/linux/desktop/LinuxWindowEffects.h"
#include "platform/linux/desktop/PortalAppearance.h"
#include "platform/linux/desktop/SessionBus.h"
#include "platform/linux/documents/XbelRecentDocuments.h"
#include "platform/linux/hotkey/ChooseGlobalHotkey.h"
#include "platform/linux/icons/DesktopIconSource.h"
#include "platform/linux/identity/LinuxDeviceIdentity.h"
#include "platform/linux/launching/LinuxApplicationLauncher.h"
#include "platform/linux/packages/ElevatedTool.h"
#include "platform/linux/packages/LinuxPackageManager.h"
#include "platform/linux/uninstalling/FlatpakFileAccess.h"
#include "platform/linux/uninstalling/LinuxResidualRoots.h"
#include "platform/linux/uninstalling/removal/HandleFileRemoval.h"
#include "platform/linux/uninstalling/removal/PkexecElevation.h"
#include "platform/linux/uninstalling/removal/XdgTrash.h"
#include "platform/linux/watching/InotifyFolderWatch.h"

#include <utility>

#include <malloc.h>

namespace quillbay::platform {

std::unique_ptr<ApplicationService> createApplicationService()
{
    return std::make_unique<DBusApplicationService>(sessionBus());
}

Platform createPlatform()
{
    auto applications = std::make_unique<LinuxApplicationSource>(ApplicationEnvironment::fromEnvironment());
    auto icons = std::make_unique<DesktopIconSource>(*applications);
    auto appearance = std::make_unique<PortalAppearance>(sessionBus());
    // The platform ends the appearance before the icons.
    QObject::connect(
        appearance.get(), &Appearance::iconThemeChanged, appearance.get(),
        [icons = icons.get(), appearance = appearance.get()] { icons->setTheme(appearance->iconTheme()); });

    Platform platform;
    platform.launcher = std::make_unique<LinuxApplicationLauncher>(
        *applications, LinuxApplicationLauncher::Surroundings::ofSession());
    platform.applications = std::move(applications);
    platform.icons = std::move(icons);
    platform.folderWatch = std::make_unique<InotifyFolderWatch>();
    platform.recentDocuments = std::make_unique<XbelRecentDocuments>();
    platform.appearance = std::move(appearance);
    platform.windowEffects = chooseWindowEffects();
    platform.hotkey = chooseGlobalHotkey(sessionBus());
    platform.biometrics = std::make_unique<FprintdBiometrics>([] { return QDBusConnection::systemBus(); });
    platform.residualRoots = std::make_shared<LinuxResidualRoots>(LinuxBaseFolders::fromEnvironment(),
                                                                  ApplicationEnvironment::fromEnvironment());
    platform.fileRemoval = std::make_unique<HandleFileRemoval>();
    platform.trash = std::make_unique<XdgTrash>();
    platform.elevation = std::make_unique<PkexecElevation>(ElevationHelper::ofProgram());
    platform.packages = std::make_unique<LinuxPackageManager>(PackageSurroundings::ofSession());
    platform.runToolElevated = [](const QStringList &command) {
        return runToolElevated(PackageSurroundings::ofSession(), command);
    };
    platform.fullDiskAccess = std::make_unique<FlatpakFileAccess>();
    platform.deviceIdentity = std::make_shared<LinuxDeviceIdentity>();
    platform.colorSampler = chooseColorSampler(sessionBus());
    return platform;
}

void growMemoryInLargeSteps()
{
#ifdef M_TOP_PAD
    constexpr int bytes = 8 << 20;
    ::mallopt(M_TOP_PAD, bytes); // can only refuse, which changes nothing
#endif
}

} // namespace quillbay::platform
