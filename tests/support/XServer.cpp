#include "support/XServer.h"

#include <QDeadlineTimer>

namespace quillbay::testing {

namespace {

constexpr int patience = 20000; // milliseconds

void end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
}

} // namespace

XServer::XServer(QSize size)
{
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height()),
                    QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-noreset")});
    while (!m_server.canReadLine()) {
        if (!m_server.waitForReadyRead(patience))
            qFatal("the X server did not start");
    }
    m_display = ':' + m_server.readLine().trimmed();
}

XServer::~XServer()
{
    end(m_windowManager);
    end(m_server);
}

void XServer::startWindowManager()
{
    m_windowManager.setProcessEnvironment(environment());
    m_windowManager.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_windowManager.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    if (!m_windowManager.waitForStarted(patience))
        qFatal("the window manager did not start");
    // The last thing it sets once it manages windows.
    const QByteArray last("_NET_CLIENT_LIST(WINDOW)");
    QProcess reader;
    reader.setProcessEnvironment(environment());
    const QDeadlineTimer deadline(patience);
    do {
        if (deadline.hasExpired())
            qFatal("the window manager does not manage");
        reader.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")});
        reader.waitForFinished(patience);
    } while (!reader.readAllStandardOutput().contains(last));
}

QProcessEnvironment XServer::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // The window manager ends without its theme.
    environment.insert(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share"));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/dev/null"));
    return environment;
}

} // namespace quillbay::testing
