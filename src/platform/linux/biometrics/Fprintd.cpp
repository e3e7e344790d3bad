#include "platform/linux/biometrics/Fprintd.h"

#include <QCoreApplication>

namespace quillbay::platform::fprintd {

const QString service = QStringLiteral("net.reactivated.Fprint");
const QString deviceInterface = QStringLiteral("net.reactivated.Fprint.Device");

namespace {

QString text(const char *english)
{
    return QCoreApplication::translate("Fingerprint", english);
}

} // namespace

QDBusMessage getDefaultDevice()
{
    return QDBusMessage::createMethodCall(service, QStringLiteral("/net/reactivated/Fprint/Manager"),
                                          QStringLiteral("net.reactivated.Fprint.Manager"),
                                          QStringLiteral("GetDefaultDevice"));
}

QDBusMessage deviceCall(const QString &owner, const QString &device, const QString &method,
                        const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(owner, device, deviceInterface, method);
    message.setArguments(arguments);
    return message;
}

QString errorText(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return {};
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return text("The fingerprint reader does not answer");
    default:
        break;
    }
    const QString kind = error.name().section(QLatin1Char('.'), -1);
    if (kind == QLatin1String("NoSuchDevice"))
        return {};
    if (kind == QLatin1String("NoEnrolledPrints"))
        return text("No fingerprint is enrolled");
    if (kind == QLatin1String("AlreadyInUse"))
        return text("The fingerprint reader is in use by another program");
    if (kind == QLatin1String("PermissionDenied") || kind == QLatin1String("AccessDenied"))
        return text("This session may not use the fingerprint reader");
    return error.message();
}

QString resultText(const QString &result)
{
    if (result == QLatin1String("verify-no-match"))
        return text("The finger was not recognized");
    if (result == QLatin1String("verify-disconnected"))
        return text("The fingerprint reader was disconnected");
    return text("The fingerprint reader reported an error");
}

} // namespace quillbay::platform::fprintd
