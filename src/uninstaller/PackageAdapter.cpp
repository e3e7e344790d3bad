#include "uninstaller/PackageAdapter.h"

#include <QFile>

#include <utility>

namespace quillbay {

namespace {

using platform::Package;
using platform::PackageData;
using platform::RemovalPreview;

QString referenceOf(const Package &package)
{
    return QStringLiteral("%1:%2:%3").arg(int(package.kind)).arg(int(package.isForOneUser)).arg(package.id);
}

// Its files may be a package's, but nobody knows which.
ApplicationOwner unknownOwner(const QByteArray &path)
{
    ApplicationOwner owner;
    owner.reference = QStringLiteral("unknown:") + QString::fromLatin1(path.toPercentEncoding("/"));
    owner.displayName = QFile::decodeName(path.mid(path.lastIndexOf('/') + 1));
    return owner;
}

} // namespace

PackageAdapter::PackageAdapter(std::shared_ptr<platform::PackageManager> manager)
    : m_manager(std::move(manager))
{
}

PackageQueries PackageAdapter::queries()
{
    if (!m_manager)
        return {};
    return {[self = shared_from_this()](const QByteArray &path) { return self->ownerOf(path); },
            [self = shared_from_this()](const QList<QByteArray> &paths) { return self->ofPackages(paths); }};
}

std::optional<ApplicationOwner> PackageAdapter::ownerOf(const QByteArray &path)
{
    if (!m_manager)
        return std::nullopt;
    const platform::PackageOwner found = m_manager->owner(path);
    if (!found.package)
        return found.error.isEmpty() ? std::nullopt : std::optional(unknownOwner(path));
    const Package &package = *found.package;
    ApplicationOwner owner;
    owner.reference = referenceOf(package);
    owner.displayName = package.displayText;
    owner.sizeBytes = package.installedBytes;
    owner.packageNames = {package.name};
    owner.isEssential = platform::isSystemPackage(
        package,
        package.canBeRemoved ? m_manager->simulateRemoval(package, PackageData::Keep) : RemovalPreview());
    owner.isRemovable = package.canBeRemoved && !owner.isEssential;
    const std::scoped_lock lock(m_mutex);
    m_packages.insert(owner.reference, package);
    return owner;
}

QList<QByteArray> PackageAdapter::ofPackages(const QList<QByteArray> &paths) const
{
    return m_manager ? m_manager->ofPackages(paths) : QList<QByteArray>();
}

std::optional<Package> PackageAdapter::packageOf(const QString &reference) const
{
    const std::scoped_lock lock(m_mutex);
    const auto found = m_packages.constFind(reference);
    return found == m_packages.constEnd() ? std::nullopt : std::optional(*found);
}

RemovalPreview PackageAdapter::simulate(const QString &reference) const
{
    if (const auto package = packageOf(reference))
        return m_manager->simulateRemoval(*package, PackageData::Keep);
    RemovalPreview preview;
    preview.reason = QStringLiteral("it could not be found out which package it belongs to");
    return preview;
}

platform::RemovalResult PackageAdapter::remove(const QString &reference, const QStringList &approved,
                                               const platform::ElevatedRun &runElevated) const
{
    const auto package = packageOf(reference);
    if (!package)
        return {platform::RemovalOutcome::Failed, {}};
    return m_manager->remove({*package, approved, PackageData::Keep, runElevated});
}

} // namespace quillbay
