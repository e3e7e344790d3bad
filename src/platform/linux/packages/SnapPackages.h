#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/PackageAnswer.h"
#include "platform/linux/packages/PackageSurroundings.h"

namespace quillbay::platform {

struct FileSpellings;

/// Applications that snapd installed.
class SnapPackages
{
public:
    explicit SnapPackages(const PackageSurroundings &surroundings);

    /// The snap `name` that the entry `file` names; as with flatpak.
    PackageOwner owner(const FileSpellings &file, const QString &name) const;
    RemovalPreview simulate(const Package &package, PackageData data) const;
    /// Without a terminal `snap` does not ask for authority but is refused; then it is run elevated. The data
    /// that it keeps is a snapshot of snapd's.
    RemovalResult remove(const Package &package, PackageData data, const ElevatedRun &runElevated) const;

private:
    enum class Kind { None, Application, System };
    struct Installed
    {
        Kind kind = Kind::None;
        QString revision;
    };
    PackageAnswer<Installed> installed(const QString &name) const;

    PackageSurroundings m_surroundings;
};

} // namespace quillbay::platform
