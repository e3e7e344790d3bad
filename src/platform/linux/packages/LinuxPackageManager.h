#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/DebianPackages.h"
#include "platform/linux/packages/FlatpakPackages.h"
#include "platform/linux/packages/PackageKit.h"
#include "platform/linux/packages/PackageSurroundings.h"
#include "platform/linux/packages/RpmPackages.h"
#include "platform/linux/packages/SnapPackages.h"

#include <QSet>

#include <mutex>
#include <optional>

namespace quillbay::platform {

/// Package managers found on a Linux system: dpkg and rpm databases, removed from through PackageKit or,
/// where that is not there, by their own programs run elevated; flatpak and snap by their own programs.
class LinuxPackageManager final : public PackageManager
{
public:
    explicit LinuxPackageManager(const PackageSurroundings &surroundings);

    PackageOwner owner(const QByteArray &applicationFile) const override;
    QByteArrayList ofPackages(const QByteArrayList &files) const override;
    RemovalPreview simulateRemoval(const Package &package, PackageData data) const override;
    RemovalResult remove(const PackageRemoval &removal) override;

private:
    struct Plan
    {
        RemovalPreview preview;
        QStringList ids; ///< For whoever simulated.
        bool isByPackageKit = false;
    };

    Plan plan(const Package &package, PackageData data) const;
    Plan planForSystem(const SystemPackages &system, const Package &package) const;
    RemovalResult carryOut(const PackageRemoval &removal, const Plan &plan) const;
    PackageOwner systemOwner(const SystemPackages &system, const FileSpellings &file) const;
    const SystemPackages &systemOf(PackageKind kind) const;
    /// Packages that this process runs on. Looked up once; a failed look-up is tried anew.
    PackageAnswer<QSet<QString>> ownPackages(const SystemPackages &system) const;

    PackageSurroundings m_surroundings;
    DebianPackages m_debian;
    RpmPackages m_rpm;
    FlatpakPackages m_flatpak;
    SnapPackages m_snap;
    PackageKit m_packageKit;
    mutable std::mutex m_mutex;
    mutable std::optional<QSet<QString>> m_ownDebian;
    mutable std::optional<QSet<QString>> m_ownRpm;
};

} // namespace quillbay::platform
