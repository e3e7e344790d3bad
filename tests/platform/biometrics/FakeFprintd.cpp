#include "platform/biometrics/FakeFprintd.h"

#include <QDBusMessage>

namespace quillbay::testing {

namespace {

const QString serviceName = QStringLiteral("net.reactivated.Fprint");
const QString managerPath = QStringLiteral("/net/reactivated/Fprint/Manager");

QString errorName(const QString &error)
{
    return QStringLiteral("net.reactivated.Fprint.Error.") + error;
}

} // namespace

const QString FakeFprintd::readerPath = QStringLiteral("/net/reactivated/Fprint/Device/0");

FakeFprintd::FakeFprintd(PrivateBus &bus)
    : m_bus(bus)
    , m_connection(bus.connect())
{
    auto *manager = new FakeManager(*this);
    manager->setParent(this);
    auto *reader = new FakeReader(*this);
    reader->setParent(this);
    if (!m_connection.registerObject(managerPath, manager, QDBusConnection::ExportAllSlots) ||
        !m_connection.registerObject(readerPath, reader, QDBusConnection::ExportAllSlots) ||
        !m_connection.registerService(serviceName))
        qFatal("fprintd cannot be played");
}

FakeFprintd::~FakeFprintd()
{
    m_connection.unregisterObject(managerPath);
    m_connection.unregisterObject(readerPath);
    m_bus.disconnect(m_connection);
}

void FakeFprintd::report(const QString &result)
{
    const bool isRetry = result.startsWith(QLatin1String("verify-retry")) ||
                         result == QLatin1String("verify-swipe-too-short") ||
                         result == QLatin1String("verify-finger-not-centered") ||
                         result == QLatin1String("verify-remove-and-retry");
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
    if (results.isEmpty())
        return;
    QMetaObject::invokeMethod(
        this, [this, result = results.takeFirst()] { report(result); }, Qt::QueuedConnection);
}

FakeManager::FakeManager(FakeFprintd &service)
    : m_service(service)
{
}

QDBusObjectPath FakeManager::GetDefaultDevice()
{
    if (m_service.silentMethod == QLatin1String("GetDefaultDevice"))
        setDelayedReply(true);
    else if (!m_service.present)
        sendErrorReply(errorName(QStringLiteral("NoSuchDevice")), QStringLiteral("No devices available"));
    return QDBusObjectPath(FakeFprintd::readerPath);
}

FakeReader::FakeReader(FakeFprintd &service)
    : m_service(service)
{
}

bool FakeReader::isStranger() const
{
    return m_service.claimer != message().service();
}

bool FakeReader::begins(const char *method, const char *refusal)
{
    const QString name = QString::fromLatin1(method);
    m_service.calls.append(name);
    const QString error = m_service.refusals.value(name, QString::fromLatin1(refusal));
    if (!error.isEmpty()) {
        sendErrorReply(errorName(error), QStringLiteral("refused: ") + error);
        return false;
    }
    if (m_service.silentMethod == name)
        setDelayedReply(true);
    return true;
}

QStringList FakeReader::ListEnrolledFingers(const QString &)
{
    if (m_service.fingers.isEmpty())
        sendErrorReply(errorName(QStringLiteral("NoEnrolledPrints")), QStringLiteral("no prints"));
    return m_service.fingers;
}

void FakeReader::Claim(const QString &)
{
    if (begins("Claim", m_service.isClaimed() ? "AlreadyInUse" : nullptr))
        m_service.claimer = message().service();
}

void FakeReader::Release()
{
    if (begins("Release", isStranger() ? "ClaimDevice" : nullptr))
        m_service.claimer.clear();
}

void FakeReader::VerifyStart(const QString &finger)
{
    const bool isWrong = finger != QLatin1String("any");
    const char *refusal = isStranger()            ? "ClaimDevice"
                          : isWrong               ? "InvalidFingername"
                          : m_service.isVerifying ? "AlreadyInUse"
                                                  : nullptr;
    if (begins("VerifyStart", refusal)) {
        m_service.isVerifying = true;
        m_service.reportNext();
    }
}

void FakeReader::VerifyStop()
{
    const char *refusal = isStranger()             ? "ClaimDevice"
                          : !m_service.isVerifying ? "NoActionInProgress"
                                                   : nullptr;
    if (begins("VerifyStop", refusal))
        m_service.isVerifying = false;
}

} // namespace quillbay::testing
