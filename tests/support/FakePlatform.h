#pragma once

#include "platform/Platform.h"
#include "support/FakeApplications.h"
#include "support/FakeBiometrics.h"
#include "support/FakeColorSampler.h"
#include "support/FakeDesktop.h"
#include "support/FakeDeviceIdentity.h"
#include "support/FakeFullDiskAccess.h"
#include "support/FakePackageManager.h"
#include "support/FakeRemoval.h"

namespace quillbay::testing {

/// A whole platform of fakes. `services` owns them and may be moved out into the program under test; the
/// pointers beside it, through which the test drives them, are good for as long as its new owner lives.
struct FakePlatform
{
    FakePlatform();

    platform::Platform services;
    FakeApplicationSource *applications = nullptr;
    FakeIconSource *icons = nullptr;
    FakeLauncher *launcher = nullptr;
    FakeFolderWatch *folderWatch = nullptr;
    FakeRecentDocuments *recentDocuments = nullptr;
    FakeAppearance *appearance = nullptr;
    FakeWindowEffects *windowEffects = nullptr;
    FakeGlobalHotkey *hotkey = nullptr;
    FakeBiometrics *biometrics = nullptr;
    FakeFileRemoval *fileRemoval = nullptr;
    FakeTrash *trash = nullptr;
    FakeElevation *elevation = nullptr;
    FakePackageManager *packages = nullptr;
    FakeFullDiskAccess *fullDiskAccess = nullptr;
    FakeDeviceIdentity *deviceIdentity = nullptr;
    FakeColorSampler *colorSampler = nullptr;
};

} // namespace quillbay::testing
