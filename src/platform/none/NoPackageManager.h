#pragma once

#include "platform/PackageManager.h"

namespace quillbay::platform {

/// A system without packages: nothing is owned, and nothing can be removed as a package.
class NoPackageManager final : public PackageManager
{
public:
    PackageOwner owner(const QByteArray &applicationFile) const override;
    QByteArrayList ofPackages(const QByteArrayList &) const override { return {}; }
    RemovalPreview simulateRemoval(const Package &package, PackageData data) const override;
    RemovalResult remove(const PackageRemoval &removal) override;
};

} // namespace quillbay::platform
