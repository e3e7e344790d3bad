#include "platform/linux/packages/PackageKit.h"

#include "platform/linux/packages/PackageKitTransaction.h"
#include "platform/linux/packages/PackageNames.h"

#include <QDBusMessage>

#include <algorithm>
#include <array>

namespace quillbay::platform {

namespace {

using End = PackageKitTransaction::End;

constexpr quint64 filterInstalled = 1 << 2;
constexpr quint64 flagSimulate = 1 << 2;

// PkInfoEnum.
constexpr quint32 informationInstalled = 1;
constexpr quint32 informationRemoving = 13;
// What a removal must not do besides: update, install, obsolete, reinstall, downgrade.
constexpr std::array<quint32, 5> otherChanges = {11, 12, 15, 19, 20};

/// Name, version, architecture, data; empty if it is none.
QStringList fieldsOf(const QString &id)
{
    const QStringList fields = id.split(u';');
    return fields.size() == 4 ? fields : QStringList();
}

bool isListed(PackageKind kind, const QString &name)
{
    return kind == PackageKind::Rpm ? isRpmName(name) : isDebianName(name);
}

QStringList namesIn(const QDBusConnection &bus, const QString &method, std::chrono::milliseconds limit)
{
    const QString service = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage reply = bus.call(
        QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/DBus"), service, method),
        QDBus::Block, int(limit.count()));
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toStringList()
                                                      : QStringList();
}

} // namespace

PackageKit::PackageKit(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
{
}

bool PackageKit::isAvailable() const
{
    const QDBusConnection bus = m_surroundings.systemBus();
    if (!bus.isConnected())
        return false;
    const QString service = QStringLiteral("org.freedesktop.PackageKit");
    return namesIn(bus, QStringLiteral("ListActivatableNames"), m_surroundings.questionLimit)
               .contains(service) ||
           namesIn(bus, QStringLiteral("ListNames"), m_surroundings.questionLimit).contains(service);
}

PackageAnswer<QString> PackageKit::identifierOf(const Package &package) const
{
    PackageKitTransaction transaction(m_surroundings.systemBus());
    const End end = transaction.run(QStringLiteral("Resolve"), {filterInstalled, QStringList{package.name}},
                                    false, m_surroundings.simulationLimit);
    if (end != End::Succeeded)
        return packageError<QString>(transaction.text());
    QStringList found;
    for (const PackageKitTransaction::Listed &listed : transaction.packages()) {
        const QStringList fields = fieldsOf(listed.id);
        if (listed.information != informationInstalled || fields.value(0) != package.name)
            continue;
        const bool isThis = package.kind == PackageKind::Rpm
                                ? package.id == fields[0] + u'-' + fields[1] + u'.' + fields[2]
                                : package.id == fields[0] || package.id == fields[0] + u':' + fields[2];
        if (isThis && !found.contains(listed.id))
            found.append(listed.id);
    }
    if (found.size() != 1)
        return packageError<QString>(
            QStringLiteral("the package service does not know %1").arg(package.name));
    return {found.first(), {}};
}

PackageAnswer<SimulatedRemoval> PackageKit::simulate(const Package &package) const
{
    using Removal = SimulatedRemoval;
    const PackageAnswer<QString> id = identifierOf(package);
    if (!id)
        return packageError<Removal>(id.error);
    PackageKitTransaction transaction(m_surroundings.systemBus());
    const End end =
        transaction.run(QStringLiteral("RemovePackages"), {flagSimulate, QStringList{id.value}, true, false},
                        false, m_surroundings.simulationLimit);
    if (end != End::Succeeded)
        return packageError<Removal>(transaction.text());
    // Some backends list the package itself, some only what goes with it.
    QStringList ids = {id.value};
    for (const PackageKitTransaction::Listed &listed : transaction.packages()) {
        if (std::find(otherChanges.begin(), otherChanges.end(), listed.information) != otherChanges.end())
            return packageError<Removal>(QStringLiteral("other packages would be installed in its place"));
        if (listed.information == informationRemoving && !ids.contains(listed.id))
            ids.append(listed.id);
    }
    Removal removal{{}, ids};
    for (const QString &one : ids) {
        const QStringList fields = fieldsOf(one);
        const QString name = listedName(package.kind, fields.value(0), fields.value(2));
        if (!isListed(package.kind, name))
            return packageError<Removal>(
                QStringLiteral("the simulated removal gave an answer that cannot be read"));
        removal.names.append(name);
    }
    return {removal, {}};
}

RemovalResult PackageKit::remove(const QStringList &ids) const
{
    PackageKitTransaction transaction(m_surroundings.systemBus());
    switch (transaction.run(QStringLiteral("RemovePackages"), {quint64(0), ids, false, false}, true,
                            m_surroundings.removalLimit)) {
    case End::Succeeded:
        return {RemovalOutcome::Removed, {}};
    case End::NotAuthorised:
        return {RemovalOutcome::NotAuthorised, transaction.text()};
    case End::Cancelled:
        return {RemovalOutcome::Declined, transaction.text()};
    case End::Unavailable:
    case End::Failed:
    case End::TimedOut:
        break;
    }
    return {RemovalOutcome::Failed, transaction.text()};
}

} // namespace quillbay::platform
