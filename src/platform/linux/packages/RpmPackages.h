#pragma once

#include "platform/linux/packages/PackageSurroundings.h"
#include "platform/linux/packages/RpmOutput.h"
#include "platform/linux/packages/SystemPackages.h"

namespace quillbay::platform {

/// The rpm database. rpm knows no essential packages; its front ends protect some by files of names, which
/// are read here, beside a few that no system goes without.
///
/// rpm takes the packages that it is told and fails rather than take another, in its simulation as well: that
/// is repeated with those that are in the way until it agrees.
class RpmPackages final : public SystemPackages
{
public:
    explicit RpmPackages(const PackageSurroundings &surroundings);

    PackageKind kind() const override { return PackageKind::Rpm; }
    bool isAvailable() const override;
    bool canRemove() const override { return isAvailable(); }
    PackageOwner owner(const FileSpellings &file) const override;
    PackageAnswer<QSet<QString>> ownersOf(const QByteArrayList &files) const override;
    PackageAnswer<QList<PackageFacts>> facts(const QStringList &names) const override;
    PackageAnswer<SimulatedRemoval> simulate(const Package &package) const override;
    QStringList removalCommand(const QStringList &ids) const override;

private:
    /// Of the files that exist; rpm takes text alone.
    PackageAnswer<QList<RpmRecord>> owners(const QByteArrayList &files) const;
    PackageAnswer<QList<RpmRecord>> records(const QStringList &names) const;
    QSet<QString> protectedNames() const;

    PackageSurroundings m_surroundings;
};

} // namespace quillbay::platform
