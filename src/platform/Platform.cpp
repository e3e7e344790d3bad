#include "platform/Platform.h"

#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationService.h"
#include "platform/ApplicationSource.h"
#include "platform/Biometrics.h"
#include "platform/ColorSampler.h"
#include "platform/DeviceIdentity.h"
#include "platform/Elevation.h"
#include "platform/FileRemoval.h"
#include "platform/FolderWatch.h"
#include "platform/FullDiskAccess.h"
#include "platform/GlobalHotkey.h"
#include "platform/IconSource.h"
#include "platform/PackageManager.h"
#include "platform/RecentDocuments.h"
#include "platform/ResidualRoots.h"
#include "platform/Trash.h"
#include "platform/WindowEffects.h"

namespace quillbay::platform {

Platform::Platform() = default;
Platform::~Platform() = default;
Platform::Platform(Platform &&) noexcept = default;
Platform &Platform::operator=(Platform &&) noexcept = default;

} // namespace quillbay::platform
