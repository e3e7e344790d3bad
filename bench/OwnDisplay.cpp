#include "bench/OwnDisplay.h"

namespace quillbay {

OwnDisplay::OwnDisplay()
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    if (qEnvironmentVariableIsSet("DISPLAY"))
        return;
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1440x900x24"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp"), QStringLiteral("-noreset")});
    while (!m_server.canReadLine()) {
        if (!m_server.waitForReadyRead(20000))
            qFatal("the X server did not start");
    }
    qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
}

OwnDisplay::~OwnDisplay()
{
    m_server.terminate();
    m_server.waitForFinished();
}

} // namespace quillbay
