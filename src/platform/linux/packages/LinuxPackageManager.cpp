#include "platform/linux/packages/LinuxPackageManager.h"

#include "platform/linux/applications/BoundedFile.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/packages/ElevatedRemoval.h"
#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/RemovalRules.h"

#include <algorithm>

#include <fcntl.h>

namespace quillbay::platform {

namespace {

using Verdict = RemovalPreview::Verdict;

RemovalPreview unknown(const QString &reason)
{
    return {Verdict::Unknown, {}, {}, reason};
}

constexpr qsizetype mostAtOnce = 300; ///< Files on one command line.

/// The package systems that an application's entry names.
struct Exporter
{
    std::optional<QString> flatpakId;
    std::optional<QString> snapName;
};

Exporter exporterOf(const QByteArray &applicationFile)
{
    BoundedFile reader;
    const auto text = reader.read(AT_FDCWD, applicationFile.constData());
    const DesktopEntry entry = (text ? parseDesktopEntry(*text, {}) : std::nullopt).value_or(DesktopEntry());
    const auto named = [](std::string_view value) {
        return value.empty() ? std::nullopt : std::optional(entryString(value).trimmed());
    };
    return {named(entry.flatpakId), named(entry.snapName)};
}

bool isNobody(const PackageOwner &owner)
{
    return !owner.package && owner.error.isEmpty();
}

QStringList sorted(QStringList names)
{
    std::sort(names.begin(), names.end());
    return names;
}

/// The package first, the others sorted; empty if it is not among them.
QStringList listing(const Package &package, const QStringList &names)
{
    QStringList others = sorted(names);
    const qsizetype itself = others.indexOf(listedName(package));
    if (itself < 0)
        return {};
    others.move(itself, 0);
    return others;
}

} // namespace

LinuxPackageManager::LinuxPackageManager(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
    , m_debian(surroundings)
    , m_rpm(surroundings)
    , m_flatpak(surroundings)
    , m_snap(surroundings)
    , m_packageKit(surroundings)
{
}

const SystemPackages &LinuxPackageManager::systemOf(PackageKind kind) const
{
    if (kind == PackageKind::Rpm)
        return m_rpm;
    return m_debian;
}

PackageOwner LinuxPackageManager::owner(const QByteArray &applicationFile) const
{
    const FileSpellings file = spellingsOf(applicationFile);
    if (file.own.isEmpty())
        return {std::nullopt, QStringLiteral("that is no path of a file")};
    const Exporter exporter = exporterOf(applicationFile);
    PackageOwner owner;
    if (exporter.flatpakId)
        owner = m_flatpak.owner(file, *exporter.flatpakId);
    if (isNobody(owner) && exporter.snapName)
        owner = m_snap.owner(file, *exporter.snapName);
    if (isNobody(owner))
        owner = systemOwner(m_debian, file);
    if (isNobody(owner))
        owner = systemOwner(m_rpm, file);
    return owner;
}

QByteArrayList LinuxPackageManager::ofPackages(const QByteArrayList &files) const
{
    QByteArrayList result;
    QByteArrayList asked;
    QList<FileSpellings> spellings;
    const auto askTogether = [&] {
        const QList<bool> owned = asked.isEmpty() ? QList<bool>() : m_debian.areOwned(spellings);
        for (qsizetype i = 0; i < owned.size(); ++i) {
            if (owned[i] || !isNobody(systemOwner(m_rpm, spellings[i])))
                result.append(asked[i]);
        }
        asked.clear();
        spellings.clear();
    };
    const bool isDebian = m_debian.isAvailable();
    for (const QByteArray &file : files) {
        const FileSpellings ways = spellingsOf(file);
        const Exporter exporter = exporterOf(file);
        if (isDebian && !ways.own.isEmpty() && !exporter.flatpakId && !exporter.snapName) {
            asked.append(file);
            spellings.append(ways);
            if (asked.size() == mostAtOnce)
                askTogether();
        } else if (!isNobody(owner(file))) {
            result.append(file);
        }
    }
    askTogether();
    return result;
}

PackageOwner LinuxPackageManager::systemOwner(const SystemPackages &system, const FileSpellings &file) const
{
    if (!system.isAvailable())
        return {};
    PackageOwner owner = system.owner(file);
    if (owner.package)
        owner.package->canBeRemoved =
            owner.package->canBeRemoved && (system.canRemove() || m_packageKit.isAvailable());
    return owner;
}

RemovalPreview LinuxPackageManager::simulateRemoval(const Package &package, PackageData data) const
{
    return plan(package, data).preview;
}

LinuxPackageManager::Plan LinuxPackageManager::plan(const Package &package, PackageData data) const
{
    if (!hasValidNames(package))
        return {unknown(QStringLiteral("that is no name of a package")), {}, false};
    if (!package.canBeRemoved)
        return {unknown(QStringLiteral("its package manager cannot be asked")), {}, false};
    if (package.isEssential)
        return {
            {Verdict::Refused, {}, {}, QStringLiteral("the system needs %1").arg(package.name)}, {}, false};
    switch (package.kind) {
    case PackageKind::Flatpak:
        return {m_flatpak.simulate(package, data), {package.id}, false};
    case PackageKind::Snap:
        return {m_snap.simulate(package, data), {package.id}, false};
    case PackageKind::Debian:
    case PackageKind::Rpm:
        break;
    }
    return planForSystem(systemOf(package.kind), package);
}

LinuxPackageManager::Plan LinuxPackageManager::planForSystem(const SystemPackages &system,
                                                             const Package &package) const
{
    Plan plan;
    PackageAnswer<SimulatedRemoval> going =
        packageError<SimulatedRemoval>(QStringLiteral("there is no way to simulate the removal"));
    if (m_packageKit.isAvailable()) {
        going = m_packageKit.simulate(package);
        plan.isByPackageKit = bool(going);
    }
    if (!going && system.canRemove())
        going = system.simulate(package);
    plan.preview.reason = going.error;
    if (!going)
        return plan;
    plan.ids = going.value.ids;
    plan.preview.packages = listing(package, going.value.names);
    if (plan.preview.packages.isEmpty()) {
        plan.preview.reason = QStringLiteral("the package manager would not remove it");
        return plan;
    }
    const PackageAnswer<QList<PackageFacts>> facts = system.facts(plan.preview.packages);
    const PackageAnswer<QSet<QString>> own = ownPackages(system);
    if (!facts || !own) {
        plan.preview.reason = facts ? own.error : facts.error;
        return plan;
    }
    plan.preview.reason = refusalOf(facts.value, m_surroundings.desktops, own.value);
    plan.preview.verdict = plan.preview.reason.isEmpty() ? Verdict::Allowed : Verdict::Refused;
    return plan;
}

PackageAnswer<QSet<QString>> LinuxPackageManager::ownPackages(const SystemPackages &system) const
{
    const std::scoped_lock lock(m_mutex);
    std::optional<QSet<QString>> &known = system.kind() == PackageKind::Rpm ? m_ownRpm : m_ownDebian;
    if (known)
        return {*known, {}};
    PackageAnswer<QSet<QString>> found = system.ownersOf(m_surroundings.ownFiles());
    if (found)
        known = found.value;
    return found;
}

RemovalResult LinuxPackageManager::remove(const PackageRemoval &removal)
{
    const Plan now = plan(removal.package, removal.data);
    switch (now.preview.verdict) {
    case Verdict::Unknown:
        return {RemovalOutcome::Failed, now.preview.reason};
    case Verdict::Refused:
        return {RemovalOutcome::Refused, now.preview.reason};
    case Verdict::Allowed:
        break;
    }
    if (sorted(now.preview.packages) != sorted(removal.approved))
        return {RemovalOutcome::Changed,
                QStringLiteral("other packages would be removed now than those that were approved")};
    return carryOut(removal, now);
}

RemovalResult LinuxPackageManager::carryOut(const PackageRemoval &removal, const Plan &plan) const
{
    if (removal.package.kind == PackageKind::Flatpak)
        return m_flatpak.remove(removal.package, removal.data);
    if (removal.package.kind == PackageKind::Snap)
        return m_snap.remove(removal.package, removal.data, removal.runElevated);
    if (plan.isByPackageKit)
        return m_packageKit.remove(plan.ids);
    return removeElevated(removal.runElevated, systemOf(removal.package.kind).removalCommand(plan.ids));
}

} // namespace quillbay::platform
