#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>

namespace quillbay::testing {

namespace {

constexpr int patience = 10000; // milliseconds

void write(const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

PrivateBus::PrivateBus()
{
    QDir(m_folder.path()).mkdir(QStringLiteral("services"));
    const QString configuration = m_folder.filePath(QStringLiteral("bus.conf"));
    write(configuration, QStringLiteral("<busconfig><type>session</type><listen>unix:dir=%1</listen>"
                                        "<servicedir>%1/services</servicedir><policy context=\"default\">"
                                        "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                                        "<allow own=\"*\"/></policy></busconfig>")
                             .arg(m_folder.path()));
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + configuration, QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(patience))
            qFatal("the bus did not start: %s", m_daemon.readAllStandardError().constData());
    }
    m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
}

PrivateBus::~PrivateBus()
{
    stop();
}

QDBusConnection PrivateBus::connect()
{
    static int count = 0;
    const QString name = QStringLiteral("private bus %1").arg(++count);
    m_connections.append(name);
    const QDBusConnection connection = QDBusConnection::connectToBus(m_address, name);
    if (!connection.isConnected())
        qFatal("no connection to the bus: %s", qPrintable(connection.lastError().message()));
    return connection;
}

void PrivateBus::disconnect(const QDBusConnection &connection)
{
    m_connections.removeOne(connection.name());
    QDBusConnection::disconnectFromBus(connection.name());
}

void PrivateBus::addService(const QString &service, const QString &command)
{
    write(m_folder.filePath(QStringLiteral("services/%1.service").arg(service)),
          QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(service, command));
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusConnection connection = connect();
    connection.call(QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                   QStringLiteral("ReloadConfig")));
    disconnect(connection);
}

void PrivateBus::stop()
{
    for (const QString &name : std::exchange(m_connections, {}))
        QDBusConnection::disconnectFromBus(name);
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.terminate();
    if (!m_daemon.waitForFinished(patience))
        m_daemon.kill();
}

} // namespace quillbay::testing
