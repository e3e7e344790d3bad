#include "PrivateBus.h"

#include <QFile>

#include <csignal>

#include <sys/prctl.h>

namespace quillbay::testing {

PrivateBus::PrivateBus()
{
    QFile configuration(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!configuration.open(QIODevice::WriteOnly))
        return;
    configuration.write(
        "<busconfig><type>session</type><listen>unix:dir=" + QFile::encodeName(m_folder.path()) +
        "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
        "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
    configuration.close();
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                    QStringLiteral("--print-address"),
                    QStringLiteral("--config-file=") + configuration.fileName()});
    if (m_daemon.waitForReadyRead(10'000))
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    for (const QString &connection : std::as_const(m_connections))
        QDBusConnection::disconnectFromBus(connection);
    m_daemon.terminate();
    m_daemon.waitForFinished(10'000);
}

QDBusConnection PrivateBus::connect()
{
    static int count = 0;
    m_connections.append(QStringLiteral("private-%1").arg(++count));
    return QDBusConnection::connectToBus(m_address, m_connections.constLast());
}

BusPeer::BusPeer(QDBusConnection connection, const QString &name, const QString &root)
{
    if (!connection.registerVirtualObject(root, this, QDBusConnection::SubPath) ||
        !connection.registerService(name))
        qFatal("cannot own %s", qPrintable(name));
}

QString BusPeer::introspect(const QString &) const
{
    return {};
}

bool BusPeer::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    calls.push_back(message);
    return connection.send(error.isEmpty() ? message.createReply()
                                           : message.createErrorReply(error, QStringLiteral("as told")));
}

} // namespace quillbay::testing
