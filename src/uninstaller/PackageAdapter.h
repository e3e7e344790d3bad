#pragma once

#include "platform/PackageManager.h"
#include "uninstaller/ApplicationRows.h"

#include <QHash>

#include <memory>
#include <mutex>

namespace quillbay {

/// What rows say of packages, and what package managers say of them: keeps which package a row's reference
/// stands for.
///
/// Thread: any but the main one; several at a time.
class PackageAdapter : public std::enable_shared_from_this<PackageAdapter>
{
public:
    /// Null: there are no packages.
    explicit PackageAdapter(std::shared_ptr<platform::PackageManager> manager);

    /// For a scan; they keep this object.
    PackageQueries queries();

    /// Of an application. A package whose removal would take the system or the desktop is essential; of one
    /// whose owner cannot be found out there is an owner that is not removable.
    std::optional<ApplicationOwner> ownerOf(const QByteArray &path);
    /// Those of which it cannot be said are taken for a package's.
    QList<QByteArray> ofPackages(const QList<QByteArray> &paths) const;

    /// Unknown for a reference that names no package.
    platform::RemovalPreview simulate(const QString &reference) const;
    platform::RemovalResult remove(const QString &reference, const QStringList &approved,
                                   const platform::ElevatedRun &runElevated) const;

private:
    std::optional<platform::Package> packageOf(const QString &reference) const;

    const std::shared_ptr<platform::PackageManager> m_manager;
    mutable std::mutex m_mutex;
    QHash<QString, platform::Package> m_packages; ///< By reference.
};

} // namespace quillbay
