#include "platform/linux/launching/X11StartupIds.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QSysInfo>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

namespace quillbay::platform {

namespace {

quint32 lastUserTime(const QWindow *window)
{
    QScreen *screen = window ? window->screen() : QGuiApplication::primaryScreen();
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    if (!screen || !native)
        return 0;
    return static_cast<quint32>(
        reinterpret_cast<quintptr>(native->nativeResourceForScreen("appusertime", screen)));
}

} // namespace

bool X11StartupIds::isAvailable() const
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

void X11StartupIds::request(const ActivationTokenRequest &request, Answer answer)
{
    if (!request.startupNotify) {
        answer({});
        return;
    }
    const quint32 time = request.timestamp != 0 ? request.timestamp : lastUserTime(request.window);
    answer({startupId(QCoreApplication::applicationPid(), QSysInfo::machineHostName(), ++m_count, time), {}});
}

QString startupId(qint64 pid, const QString &host, int count, quint32 timestamp)
{
    return QStringLiteral("quillbay-%1-%2-%3_TIME%4")
        .arg(QString::number(pid), host, QString::number(count), QString::number(timestamp));
}

} // namespace quillbay::platform
