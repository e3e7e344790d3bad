#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/PackageAnswer.h"
#include "platform/linux/packages/PackageSurroundings.h"

namespace quillbay::platform {

struct FileSpellings;

/// Applications that flatpak installed, for the user or for all. Flatpak asks for authority itself.
class FlatpakPackages
{
public:
    explicit FlatpakPackages(const PackageSurroundings &surroundings);

    /// The application `id` that the entry `file` names. An entry that was copied out of flatpak's folders
    /// belongs to it as long as the application is installed.
    PackageOwner owner(const FileSpellings &file, const QString &id) const;
    /// Whether it is still there, and what of the user's would go.
    RemovalPreview simulate(const Package &package, PackageData data) const;
    RemovalResult remove(const Package &package, PackageData data) const;

private:
    struct Installed
    {
        QString reference; ///< In full; empty where it is not installed.
        qint64 bytes = 0;
    };
    PackageAnswer<Installed> installed(const QString &id, bool forOneUser) const;

    PackageSurroundings m_surroundings;
};

} // namespace quillbay::platform
