#include "platform/biometrics/FakeFprintd.h"

#include <QDBusObjectPath>

namespace quillbay::testing {

namespace {

const QString root = QStringLiteral("/net/reactivated/Fprint");

} // namespace

const QString FakeFprintd::readerPath = root + QStringLiteral("/Device/0");

FakeFprintd::FakeFprintd(PrivateBus &bus)
    : m_bus(bus)
    , m_connection(bus.connect())
{
    if (!m_connection.registerVirtualObject(root, this, QDBusConnection::SubPath) ||
        !m_connection.registerService(QStringLiteral("net.reactivated.Fprint")))
        qFatal("fprintd cannot be played");
}

FakeFprintd::~FakeFprintd()
{
    m_connection.unregisterObject(root);
    m_bus.disconnect(m_connection);
}

bool FakeFprintd::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString method = message.member();
    QDBusMessage reply = message.createReply();
    if (method == QLatin1String("GetDefaultDevice"))
        reply << QVariant::fromValue(QDBusObjectPath(readerPath));
    else if (method == QLatin1String("ListEnrolledFingers"))
        reply << fingers;
    else
        calls.append(method);
    const QString error = refusal(message);
    if (!error.isEmpty())
        reply = message.createErrorReply(QStringLiteral("net.reactivated.Fprint.Error.") + error,
                                         QStringLiteral("refused: ") + error);
    if (method != silentMethod && !connection.send(reply))
        qFatal("fprintd cannot answer");
    if (error.isEmpty())
        carryOut(message);
    return true;
}

QString FakeFprintd::refusal(const QDBusMessage &message) const
{
    const QString method = message.member();
    if (refusals.contains(method))
        return refusals.value(method);
    if (method == QLatin1String("GetDefaultDevice"))
        return present ? QString() : QStringLiteral("NoSuchDevice");
    if (method == QLatin1String("ListEnrolledFingers"))
        return fingers.isEmpty() ? QStringLiteral("NoEnrolledPrints") : QString();
    if (method == QLatin1String("Claim"))
        return claimer.isEmpty() ? QString() : QStringLiteral("AlreadyInUse");
    if (claimer != message.service())
        return QStringLiteral("ClaimDevice");
    if (method == QLatin1String("VerifyStart") && isVerifying)
        return QStringLiteral("AlreadyInUse");
    if (method == QLatin1String("VerifyStop") && !isVerifying)
        return QStringLiteral("NoActionInProgress");
    return {};
}

void FakeFprintd::carryOut(const QDBusMessage &message)
{
    const QString method = message.member();
    if (method == QLatin1String("Claim")) {
        claimer = message.service();
    } else if (method == QLatin1String("Release")) {
        claimer.clear();
    } else if (method == QLatin1String("VerifyStart")) {
        isVerifying = true;
        reportNext();
    } else if (method == QLatin1String("VerifyStop")) {
        isVerifying = false;
    }
}

void FakeFprintd::report(const QString &result)
{
    const bool isRetry =
        result.contains(QLatin1String("retry")) || result == QLatin1String("verify-swipe-too-short");
    QDBusMessage status = QDBusMessage::createSignal(
        readerPath, QStringLiteral("net.reactivated.Fprint.Device"), QStringLiteral("VerifyStatus"));
    status << result << !isRetry;
    if (!m_connection.send(status))
        qFatal("the status could not be sent");
    if (isRetry)
        reportNext();
}

void FakeFprintd::reportNext()
{
    if (!results.isEmpty())
        report(results.takeFirst());
}

} // namespace quillbay::testing
