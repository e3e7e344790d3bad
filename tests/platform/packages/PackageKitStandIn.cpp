#include "platform/packages/PackageKitStandIn.h"

#include <QTimer>

namespace quillbay::testing {

namespace {

QString serviceName()
{
    return QStringLiteral("org.freedesktop.PackageKit");
}

QString word(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

PackageKitStandIn::PackageKitStandIn(const QDBusConnection &bus)
    : m_bus(bus)
{
    if (!m_bus.registerObject(QStringLiteral("/org/freedesktop/PackageKit"), this,
                              QDBusConnection::ExportAllSlots) ||
        !m_bus.registerService(serviceName()))
        qFatal("PackageKit's name is taken");
}

PackageKitStandIn::~PackageKitStandIn()
{
    vanish();
}

void PackageKitStandIn::vanish()
{
    if (!m_bus.isConnected())
        return;
    // Answered by the bus before the next one asks for the name.
    m_bus.unregisterService(serviceName());
    const QString name = m_bus.name();
    // The connection lives as long as anyone holds it.
    m_bus = QDBusConnection(QStringLiteral("no bus any more"));
    QDBusConnection::disconnectFromBus(name);
}

QDBusObjectPath PackageKitStandIn::CreateTransaction()
{
    if (refusesTransactions) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("no transaction today"));
        return {};
    }
    const QString path = QStringLiteral("/%1_stand_in").arg(++m_count);
    m_bus.registerObject(path, new TransactionStandIn(this),
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    return QDBusObjectPath(path);
}

TransactionStandIn::TransactionStandIn(PackageKitStandIn *service)
    : QObject(service)
    , m_service(service)
{
}

void TransactionStandIn::SetHints(const QStringList &hints)
{
    m_service->calls.append(QStringLiteral("SetHints ") + hints.join(u' '));
}

void TransactionStandIn::Resolve(qulonglong filter, const QStringList &names)
{
    m_service->calls.append(QStringLiteral("Resolve %1 %2").arg(filter).arg(names.join(u' ')));
    give(m_service->resolve);
}

void TransactionStandIn::RemovePackages(qulonglong flags, const QStringList &ids, bool allowDependents,
                                        bool autoremove)
{
    m_service->calls.append(
        QStringLiteral("RemovePackages %1 %2 %3 %4")
            .arg(QString::number(flags), ids.join(u' '), word(allowDependents), word(autoremove)));
    give(flags ? m_service->simulation : m_service->removal);
}

void TransactionStandIn::Cancel()
{
    m_service->calls.append(QStringLiteral("Cancel"));
}

void TransactionStandIn::give(const PackageKitStandIn::Answer &answer)
{
    if (!answer.refusal.isEmpty()) {
        sendErrorReply(answer.refusal, answer.details);
        return;
    }
    if (answer.isSilent && !answer.first)
        return;
    // Later than the reply to the call, as the service's.
    QTimer::singleShot(0, this, [this, answer] {
        if (answer.first)
            answer.first();
        if (answer.isSilent)
            return;
        for (const auto &[information, id] : answer.packages)
            Q_EMIT Package(information, id, QStringLiteral("summary"));
        if (answer.errorCode)
            Q_EMIT ErrorCode(answer.errorCode, answer.details);
        Q_EMIT Finished(answer.exit, 1);
    });
}

} // namespace quillbay::testing
