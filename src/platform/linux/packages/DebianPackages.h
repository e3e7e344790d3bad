#pragma once

#include "platform/linux/packages/PackageSurroundings.h"
#include "platform/linux/packages/SystemPackages.h"

namespace quillbay::platform {

/// The dpkg database, with apt to simulate. A removal is dpkg's own, which takes the packages that it is told
/// and fails rather than take another; apt would.
class DebianPackages final : public SystemPackages
{
public:
    explicit DebianPackages(const PackageSurroundings &surroundings);

    PackageKind kind() const override { return PackageKind::Debian; }
    bool isAvailable() const override;
    bool canRemove() const override;
    PackageOwner owner(const FileSpellings &file) const override;
    /// Of each of the files whether it is a package's, by one question; true where that is unclear.
    QList<bool> areOwned(const QList<FileSpellings> &files) const;
    PackageAnswer<QSet<QString>> ownersOf(const QByteArrayList &files) const override;
    PackageAnswer<QList<PackageFacts>> facts(const QStringList &names) const override;
    PackageAnswer<SimulatedRemoval> simulate(const Package &package) const override;
    QStringList removalCommand(const QStringList &ids) const override;

private:
    PackageAnswer<QByteArray> search(const QByteArrayList &paths) const;

    PackageSurroundings m_surroundings;
};

} // namespace quillbay::platform
