#include "platform/linux/biometrics/FingerprintVerification.h"

#include "platform/linux/biometrics/Fprintd.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace quillbay::platform {

namespace {

bool isRefusal(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage && QDBusError(reply).type() != QDBusError::NoReply;
}

} // namespace

FingerprintVerification::FingerprintVerification(const QDBusConnection &bus, const Limits &limits,
                                                 QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_limits(limits)
    , m_owner(fprintd::service)
{
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            &FingerprintVerification::serviceEnded);
    m_fingerTimer.setSingleShot(true);
    m_fingerTimer.setInterval(m_limits.finger);
    connect(&m_fingerTimer, &QTimer::timeout, this, [this] {
        answer(false, QCoreApplication::translate("Fingerprint", "No finger was read in time"));
    });
}

FingerprintVerification::~FingerprintVerification()
{
    const auto send = [this](const char *method) {
        QDBusMessage message = fprintd::deviceCall(m_owner, m_device, QString::fromLatin1(method));
        message.setAutoStartService(false);
        if (!m_bus.send(message))
            qWarning("fprintd was not told of the end: %s", method);
    };
    if (m_isVerifying)
        send("VerifyStop");
    if (m_isClaimed)
        send("Release");
}

void FingerprintVerification::start()
{
    m_fingerTimer.start();
    call(fprintd::getDefaultDevice(), [this](const QDBusMessage &reply) {
        m_device = reply.arguments().value(0).value<QDBusObjectPath>().path();
        proceed(reply, [this] { claim(); });
    });
}

void FingerprintVerification::cancel()
{
    answer(false);
}

void FingerprintVerification::call(QDBusMessage message, const Then &then)
{
    ++m_calls;
    // What is to be undone is not undone by a service that starts for it.
    message.setAutoStartService(!m_isAnswered);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, m_limits.call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, then] {
        watcher->deleteLater();
        --m_calls;
        then(watcher->reply());
    });
}

void FingerprintVerification::callDevice(const QString &method, const QVariantList &arguments,
                                         const Then &then)
{
    call(fprintd::deviceCall(m_owner, m_device, method, arguments), then);
}

void FingerprintVerification::proceed(const QDBusMessage &reply, const std::function<void()> &next)
{
    if (m_isAnswered)
        windDown();
    else if (reply.type() == QDBusMessage::ErrorMessage)
        answer(false, fprintd::errorText(QDBusError(reply)));
    else
        next();
}

void FingerprintVerification::claim()
{
    m_isClaimed = true;
    callDevice(QStringLiteral("Claim"), {QString()}, [this](const QDBusMessage &reply) {
        if (isRefusal(reply))
            m_isClaimed = false;
        else if (reply.type() == QDBusMessage::ReplyMessage)
            follow(reply.service());
        proceed(reply, [this] { verify(); });
    });
}

/// By the unique name: for another one Qt would wait for the bus to tell who owns it, and a signal of
/// somebody else is no proof.
void FingerprintVerification::follow(const QString &owner)
{
    m_owner = owner;
    m_watcher.addWatchedService(m_owner);
    m_bus.connect(m_owner, m_device, fprintd::deviceInterface, QStringLiteral("VerifyStatus"), this,
                  SLOT(onStatus(QString, bool)));
}

void FingerprintVerification::verify()
{
    ++m_tries;
    m_isVerifying = true;
    callDevice(QStringLiteral("VerifyStart"), {QStringLiteral("any")}, [this](const QDBusMessage &reply) {
        if (isRefusal(reply))
            m_isVerifying = false;
        proceed(reply, [this] { Q_EMIT waiting(); });
    });
}

void FingerprintVerification::verifyAgain()
{
    m_isVerifying = false;
    callDevice(QStringLiteral("VerifyStop"), {}, [this](const QDBusMessage &) {
        if (m_isAnswered)
            windDown();
        else
            verify();
    });
}

void FingerprintVerification::onStatus(const QString &result, bool done)
{
    // Until it is done, the result only says how to hold the finger the next time.
    if (!done || !m_isVerifying || m_isAnswered)
        return;
    if (result == QLatin1String("verify-match"))
        answer(true);
    else if (result == QLatin1String("verify-no-match") && m_tries < tries)
        verifyAgain();
    else
        answer(false, fprintd::resultText(result));
}

void FingerprintVerification::answer(bool success, const QString &error)
{
    if (std::exchange(m_isAnswered, true))
        return;
    m_fingerTimer.stop();
    Q_EMIT answered(success, error);
    windDown();
}

void FingerprintVerification::windDown()
{
    const auto stepBack = [this](const char *method) {
        callDevice(QString::fromLatin1(method), {}, [this](const QDBusMessage &) { windDown(); });
    };
    if (m_calls > 0 || m_hasEnded)
        return;
    if (std::exchange(m_isVerifying, false)) {
        stepBack("VerifyStop");
    } else if (std::exchange(m_isClaimed, false)) {
        stepBack("Release");
    } else {
        m_hasEnded = true;
        Q_EMIT ended();
    }
}

void FingerprintVerification::serviceEnded()
{
    m_isVerifying = false;
    m_isClaimed = false;
    answer(false, QCoreApplication::translate("Fingerprint", "The fingerprint service has ended"));
}

} // namespace quillbay::platform
