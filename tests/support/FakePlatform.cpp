#include "support/FakePlatform.h"

#include <memory>

namespace quillbay::testing {

namespace {

template <typename Fake, typename Interface>
Fake *make(std::unique_ptr<Interface> &owner)
{
    auto fake = std::make_unique<Fake>();
    Fake *result = fake.get();
    owner = std::move(fake);
    return result;
}

} // namespace

FakePlatform::FakePlatform()
    : applications(make<FakeApplicationSource>(services.applications))
    , icons(make<FakeIconSource>(services.icons))
    , launcher(make<FakeLauncher>(services.launcher))
    , folderWatch(make<FakeFolderWatch>(services.folderWatch))
    , recentDocuments(make<FakeRecentDocuments>(services.recentDocuments))
    , appearance(make<FakeAppearance>(services.appearance))
    , windowEffects(make<FakeWindowEffects>(services.windowEffects))
    , hotkey(make<FakeGlobalHotkey>(services.hotkey))
    , biometrics(make<FakeBiometrics>(services.biometrics))
    , fileRemoval(make<FakeFileRemoval>(services.fileRemoval))
    , trash(make<FakeTrash>(services.trash))
    , elevation(make<FakeElevation>(services.elevation))
    , packages(make<FakePackageManager>(services.packages))
    , fullDiskAccess(make<FakeFullDiskAccess>(services.fullDiskAccess))
    , colorSampler(make<FakeColorSampler>(services.colorSampler))
{
    auto identity = std::make_shared<FakeDeviceIdentity>();
    deviceIdentity = identity.get();
    services.deviceIdentity = std::move(identity);
}

} // namespace quillbay::testing
