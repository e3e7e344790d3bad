#pragma once

#include "platform/PackageManager.h"

#include <memory>

namespace quillbay::platform {

class Appearance;
class ApplicationLauncher;
class ApplicationService;
class ApplicationSource;
class Biometrics;
class DeviceIdentity;
class ColorSampler;
class Elevation;
class FileRemoval;
class FolderWatch;
class FullDiskAccess;
class GlobalHotkey;
class IconSource;
class RecentDocuments;
class ResidualRoots;
class Trash;
class WindowEffects;

/// All services of the running desktop, each behind its interface. `main` makes one and owns it.
struct Platform
{
    Platform();
    ~Platform();
    Platform(Platform &&) noexcept;
    Platform &operator=(Platform &&) noexcept;

    std::unique_ptr<ApplicationSource> applications;
    std::unique_ptr<IconSource> icons;
    std::unique_ptr<ApplicationLauncher> launcher;
    std::unique_ptr<FolderWatch> folderWatch;
    std::unique_ptr<RecentDocuments> recentDocuments;
    std::unique_ptr<Appearance> appearance;
    std::unique_ptr<WindowEffects> windowEffects;
    std::unique_ptr<GlobalHotkey> hotkey;
    std::unique_ptr<Biometrics> biometrics;
    std::shared_ptr<const ResidualRoots> residualRoots; ///< Shared with scans that still run.
    std::unique_ptr<FileRemoval> fileRemoval;
    std::unique_ptr<Trash> trash;
    std::unique_ptr<Elevation> elevation;
    std::unique_ptr<PackageManager> packages;
    ElevatedRun runToolElevated; ///< For those package managers that need it.
    std::unique_ptr<FullDiskAccess> fullDiskAccess;
    std::shared_ptr<const DeviceIdentity> deviceIdentity; ///< Shared with the thread that asks it.
    std::unique_ptr<ColorSampler> colorSampler;
};

/// The name that the desktop knows the program by: application id, bus name, name of its desktop entry.
inline constexpr char applicationId[] = "org.quillbay.Quillbay";

/// Made before any GUI: whether this process is to run at all.
std::unique_ptr<ApplicationService> createApplicationService();

/// The services of this desktop. Needs the application object. Nothing in here waits or reads a folder.
Platform createPlatform();

/// Whether a window can be opened at all; if not, `reason` is one line for the user. Needs no application
/// object.
bool hasDisplay(const char **reason);

/// Lets the process ask the system for memory in few large steps: each of many small ones makes all threads
/// wait for each other. What is not used costs nothing. Before there are threads.
void growMemoryInLargeSteps();

} // namespace quillbay::platform
