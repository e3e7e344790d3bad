#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QHash>
#include <QObject>

namespace quillbay::testing {

/// Stands in for the desktop portal's settings on a bus: answers `Read` from `values`, each value inside a
/// second variant as the real one does, and says NotFound for the rest.
class PortalStandIn : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    /// Puts the object and the name on the bus.
    explicit PortalStandIn(const QDBusConnection &bus);

    QHash<QString, QVariant> values; ///< By "group key".
    int reads = 0;
    bool silent = false; ///< Take calls and never answer.

    /// Sets a value and sends the signal for it.
    void change(const QString &group, const QString &key, const QVariant &value);
    /// Sends the signal with any arguments.
    void sendChanged(const QVariantList &arguments);
    void leave();

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key);

private:
    QDBusConnection m_bus;
};

} // namespace quillbay::testing
