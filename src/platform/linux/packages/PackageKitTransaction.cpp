#include "platform/linux/packages/PackageKitTransaction.h"

#include "platform/linux/packages/PackageTool.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QTimer>

namespace quillbay::platform {

namespace {

constexpr qsizetype mostPackages = 20000;
constexpr qsizetype longestId = 1024;

// PkExitEnum and PkErrorEnum.
constexpr quint32 exitSuccess = 1;
constexpr quint32 exitCancelled = 3;
constexpr quint32 errorCancelled = 17;
constexpr quint32 errorNotAuthorised = 48;

QString interfaceName()
{
    return QStringLiteral("org.freedesktop.PackageKit.Transaction");
}

int milliseconds(std::chrono::milliseconds limit)
{
    return int(limit.count());
}

bool isRefusal(const QDBusError &error)
{
    return error.name() == interfaceName() + QLatin1String(".RefusedByPolicy") ||
           error.type() == QDBusError::AccessDenied;
}

} // namespace

PackageKitTransaction::PackageKitTransaction(const QDBusConnection &bus)
    : m_bus(bus)
{
}

PackageKitTransaction::End PackageKitTransaction::run(const QString &method, const QVariantList &arguments,
                                                      bool isInteractive, std::chrono::milliseconds limit)
{
    if (!begin(limit))
        return End::Unavailable;
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, [this] {
        m_bus.asyncCall(message(QStringLiteral("Cancel")));
        stop(End::TimedOut, QStringLiteral("the package service did not end in time"));
    });
    timer.start(limit);
    QDBusServiceWatcher watcher(m_service, m_bus, QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        stop(End::Failed, QStringLiteral("the package service ended before its work was done"));
    });

    QDBusMessage hints = message(QStringLiteral("SetHints"));
    hints << QStringList{isInteractive ? QStringLiteral("interactive=true")
                                       : QStringLiteral("interactive=false"),
                         QStringLiteral("background=false")};
    m_bus.asyncCall(hints);
    call(method, arguments, limit);
    m_loop.exec();
    return m_end;
}

bool PackageKitTransaction::begin(std::chrono::milliseconds limit)
{
    const QString service = QStringLiteral("org.freedesktop.PackageKit");
    const QDBusMessage create = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/PackageKit"), service, QStringLiteral("CreateTransaction"));
    const QDBusMessage reply = m_bus.call(create, QDBus::Block, milliseconds(limit));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("o")) {
        m_text = presentable(reply.errorMessage().toUtf8());
        return false;
    }
    m_service = reply.service();
    m_path = reply.arguments().constFirst().value<QDBusObjectPath>().path();
    const auto listen = [this](const char *signal, const char *slot) {
        return m_bus.connect(m_service, m_path, interfaceName(), QLatin1String(signal), this, slot);
    };
    return listen("Package", SLOT(onPackage(quint32, QString, QString))) &&
           listen("ErrorCode", SLOT(onErrorCode(quint32, QString))) &&
           listen("Finished", SLOT(onFinished(quint32, quint32)));
}

void PackageKitTransaction::call(const QString &method, const QVariantList &arguments,
                                 std::chrono::milliseconds limit)
{
    QDBusMessage request = message(method);
    request.setArguments(arguments);
    request.setInteractiveAuthorizationAllowed(true);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(request, milliseconds(limit)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *answered) {
        // The answer to the call is only that it was taken; a service that is gone is told by the watcher.
        const QDBusError error = answered->error();
        if (error.isValid())
            stop(isRefusal(error) ? End::NotAuthorised : End::Failed, presentable(error.message().toUtf8()));
    });
}

QDBusMessage PackageKitTransaction::message(const QString &method) const
{
    return QDBusMessage::createMethodCall(m_service, m_path, interfaceName(), method);
}

void PackageKitTransaction::stop(End end, const QString &text)
{
    if (m_isStopped)
        return;
    m_isStopped = true;
    m_end = end;
    m_text =
        text.isEmpty() && end != End::Succeeded ? QStringLiteral("the package service gave no reason") : text;
    m_loop.quit();
}

void PackageKitTransaction::onPackage(quint32 information, const QString &id, const QString &)
{
    if (m_packages.size() >= mostPackages || id.size() > longestId) {
        m_bus.asyncCall(message(QStringLiteral("Cancel")));
        stop(End::Failed, QStringLiteral("the package service's answer has no end"));
        return;
    }
    m_packages.append({information, id});
}

void PackageKitTransaction::onErrorCode(quint32 code, const QString &details)
{
    m_errorCode = code;
    if (!m_isStopped)
        m_text = presentable(details.toUtf8());
}

void PackageKitTransaction::onFinished(quint32 exit, quint32)
{
    const QString text = m_text;
    if (exit == exitSuccess && m_errorCode == 0)
        stop(End::Succeeded);
    else if (m_errorCode == errorNotAuthorised)
        stop(End::NotAuthorised, text);
    else if (exit == exitCancelled || m_errorCode == errorCancelled)
        stop(End::Cancelled, text);
    else
        stop(End::Failed, text);
}

} // namespace quillbay::platform
