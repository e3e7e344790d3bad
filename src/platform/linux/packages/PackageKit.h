#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/PackageAnswer.h"
#include "platform/linux/packages/PackageSurroundings.h"
#include "platform/linux/packages/SystemPackages.h"

namespace quillbay::platform {

/// The PackageKit service on the system bus: one way to every system's package manager, with questions for
/// authority of its own.
///
/// Its identifiers carry the version, so that a package that was upgraded since is not removed. It takes a
/// switch against removing more than it is told, which is set, but which not every backend heeds.
class PackageKit
{
public:
    explicit PackageKit(const PackageSurroundings &surroundings);

    /// Whether the service runs or can be started.
    bool isAvailable() const;
    /// What would go with `package`; `names` as in `RemovalPreview::packages`.
    PackageAnswer<SimulatedRemoval> simulate(const Package &package) const;
    /// Removes the packages of a simulation.
    RemovalResult remove(const QStringList &ids) const;

private:
    /// The service's identifier of an installed package.
    PackageAnswer<QString> identifierOf(const Package &package) const;

    PackageSurroundings m_surroundings;
};

} // namespace quillbay::platform
