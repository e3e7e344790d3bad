#include "platform/desktop/PortalStandIn.h"

#include <QDBusMessage>

namespace quillbay::testing {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace

PortalStandIn::PortalStandIn(const QDBusConnection &bus)
    : m_bus(bus)
{
    if (!m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots) || !m_bus.registerService(service))
        qFatal("the portal cannot be played");
}

QDBusVariant PortalStandIn::Read(const QString &group, const QString &key)
{
    ++reads;
    const QVariant value = values.value(group + QLatin1Char(' ') + key);
    if (silent)
        setDelayedReply(true);
    else if (!value.isValid())
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                       QStringLiteral("no such setting"));
    return QDBusVariant(QVariant::fromValue(QDBusVariant(value.isValid() ? value : QVariant(0))));
}

void PortalStandIn::change(const QString &group, const QString &key, const QVariant &value)
{
    values.insert(group + QLatin1Char(' ') + key, value);
    sendChanged({group, key, QVariant::fromValue(QDBusVariant(value))});
}

void PortalStandIn::sendChanged(const QVariantList &arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    signal.setArguments(arguments);
    if (!m_bus.send(signal))
        qFatal("the signal could not be sent");
}

void PortalStandIn::leave()
{
    m_bus.unregisterObject(path);
    m_bus.unregisterService(service);
}

} // namespace quillbay::testing
