#include "support/XServer.h"

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

XServer::XServer()
{
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1000x800x24"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp"), QStringLiteral("-noreset")});
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
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    // Its theme is among the system's data.
    environment.remove(QStringLiteral("XDG_DATA_DIRS"));
    m_windowManager.setProcessEnvironment(environment);
    m_windowManager.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_windowManager.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    if (!m_windowManager.waitForStarted(patience))
        qFatal("the window manager did not start");
}

} // namespace quillbay::testing
