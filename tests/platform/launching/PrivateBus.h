#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>

#include <vector>

namespace quillbay::testing {

/// A message bus of the test's own, which can start nothing and ends with this object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    bool isRunning() const { return !m_address.isEmpty(); }
    /// A new connection to it, closed with the bus.
    QDBusConnection connect();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

/// A program on the bus that takes every call to a name, records it, and answers with nothing or with an
/// error.
class BusPeer : public QDBusVirtualObject
{
public:
    /// `root` is the object that takes the calls, with all below it.
    BusPeer(QDBusConnection connection, const QString &name, const QString &root);

    QString error; ///< Name of the error to answer with; empty: success.
    std::vector<QDBusMessage> calls;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
};

} // namespace quillbay::testing
