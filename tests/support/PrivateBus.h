#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace quillbay::testing {

/// A session bus of a test's own, without any of the system's services. Ends with the object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    QString address() const { return m_address; }
    /// A new connection: a peer of its own on the bus.
    QDBusConnection connect();
    /// Closes what `connect` gave.
    void disconnect(const QDBusConnection &connection);
    /// Makes the bus start `command` when the name `service` is called.
    void addService(const QString &service, const QString &command);
    void stop();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace quillbay::testing
