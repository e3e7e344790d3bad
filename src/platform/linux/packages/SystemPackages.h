#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/PackageAnswer.h"

#include <QByteArrayList>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace quillbay::platform {

struct FileSpellings;

/// What the package database says of one installed package, as far as its removal depends on it.
struct PackageFacts
{
    QString name; ///< Without architecture.
    QString id;   ///< As `Package::id`.
    bool isEssential = false;
    QStringList provides; ///< Virtual packages that it stands for.
    qint64 installedBytes = 0;

    bool operator==(const PackageFacts &) const = default;
};

/// Packages that a simulation would remove; both lists of one order.
struct SimulatedRemoval
{
    QStringList names; ///< As `RemovalPreview::packages`.
    QStringList ids;   ///< As the removal is told them.
};

/// The package database that the system itself is made of, asked through its own programs.
/// Thread: as `PackageManager`.
class SystemPackages
{
public:
    virtual ~SystemPackages() = default;

    virtual PackageKind kind() const = 0;
    /// Whether the database can be asked at all.
    virtual bool isAvailable() const = 0;
    /// Whether the own programs can simulate and remove.
    virtual bool canRemove() const = 0;

    /// As `PackageManager::owner`; `canBeRemoved` is true where one package alone owns the file.
    virtual PackageOwner owner(const FileSpellings &file) const = 0;
    /// Names, without architecture, of all packages that own any of the files.
    virtual PackageAnswer<QSet<QString>> ownersOf(const QByteArrayList &files) const = 0;
    /// Facts of all these, which are names as in `RemovalPreview::packages`. A package that is not installed
    /// is an error.
    virtual PackageAnswer<QList<PackageFacts>> facts(const QStringList &names) const = 0;
    virtual PackageAnswer<SimulatedRemoval> simulate(const Package &package) const = 0;
    /// The command, for an administrator, that removes exactly these and fails where others would have to go.
    virtual QStringList removalCommand(const QStringList &ids) const = 0;
};

} // namespace quillbay::platform
