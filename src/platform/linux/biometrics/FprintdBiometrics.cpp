#include "platform/linux/biometrics/FprintdBiometrics.h"

#include "platform/linux/biometrics/Fprintd.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>
#include <QThreadPool>

#include <utility>

namespace quillbay::platform {

namespace {

template <typename Reply>
void whenDone(const QDBusPendingCall &call, QObject *context, std::function<void(const Reply &)> then)
{
    auto *watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, then = std::move(then)] {
        watcher->deleteLater();
        then(Reply(*watcher));
    });
}

QDBusMessage listActivatableNames()
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                          QStringLiteral("ListActivatableNames"));
}

} // namespace

FprintdBiometrics::FprintdBiometrics(std::function<QDBusConnection()> openBus, const Limits &limits,
                                     QObject *parent)
    : Biometrics(parent)
    , m_limits(limits)
{
    QThreadPool::globalInstance()->start([openBus = std::move(openBus), self = QPointer(this)] {
        const QDBusConnection bus = openBus();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, bus] {
                if (self)
                    self->adopt(bus);
            },
            Qt::QueuedConnection);
    });
}

FprintdBiometrics::~FprintdBiometrics() = default;

void FprintdBiometrics::adopt(const QDBusConnection &bus)
{
    m_bus = bus;
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { ownerChanged(owner); });
    m_watcher.addWatchedService(fprintd::service);
    if (m_asking.empty())
        m_asking.emplace_back();
    ask();
    startNext();
}

void FprintdBiometrics::ownerChanged(const QString &owner)
{
    if (!owner.isEmpty()) {
        refresh();
        return;
    }
    whenDone<QDBusPendingReply<QStringList>>(m_bus->asyncCall(listActivatableNames(), m_limits.call), this,
                                             [this](const QDBusPendingReply<QStringList> &reply) {
                                                 if (!reply.value().contains(fprintd::service))
                                                     setUsable(false);
                                             });
}

void FprintdBiometrics::check(Answer answer)
{
    m_asking.push_back(std::move(answer));
    if (m_bus && m_asking.size() == 1)
        ask();
}

void FprintdBiometrics::ask()
{
    using Reply = QDBusPendingReply<QDBusObjectPath>;
    whenDone<Reply>(m_bus->asyncCall(fprintd::getDefaultDevice(), m_limits.call), this,
                    [this](const Reply &reply) {
                        if (reply.isError())
                            conclude(false, fprintd::errorText(reply.error()));
                        else
                            askForFingers(reply.value().path());
                    });
}

void FprintdBiometrics::askForFingers(const QString &device)
{
    using Reply = QDBusPendingReply<QStringList>;
    const QDBusMessage message = fprintd::deviceCall(
        fprintd::service, device, QStringLiteral("ListEnrolledFingers"), {QString()}); // of the caller
    whenDone<Reply>(m_bus->asyncCall(message, m_limits.call), this, [this](const Reply &reply) {
        if (reply.isError())
            conclude(false, fprintd::errorText(reply.error()));
        else
            conclude(!reply.value().isEmpty());
    });
}

void FprintdBiometrics::conclude(bool usable, const QString &error)
{
    setUsable(usable);
    for (const Answer &answer : std::exchange(m_asking, {})) {
        if (answer)
            answer(usable, error);
    }
}

void FprintdBiometrics::setUsable(bool usable)
{
    if (std::exchange(m_isUsable, usable) != usable)
        Q_EMIT usableChanged();
}

void FprintdBiometrics::evaluate(const QString &reason, Answer answer)
{
    cancel();
    m_next = Request{reason, std::move(answer)};
    QMetaObject::invokeMethod(this, &FprintdBiometrics::startNext, Qt::QueuedConnection);
}

void FprintdBiometrics::cancel()
{
    if (m_next) {
        QMetaObject::invokeMethod(
            this, [answer = std::exchange(m_next, {})->answer] { answer(false, {}); }, Qt::QueuedConnection);
    }
    if (m_verification)
        m_verification->cancel();
}

void FprintdBiometrics::startNext()
{
    if (!m_bus || !m_next || m_verification)
        return;
    m_current = *std::exchange(m_next, {});
    m_verification = std::make_unique<FingerprintVerification>(*m_bus, m_limits);
    const FingerprintVerification *verification = m_verification.get();
    connect(verification, &FingerprintVerification::waiting, this, [this] { setPrompt(m_current.reason); });
    // From the event loop: an answer runs what may ask for the next verification.
    connect(
        verification, &FingerprintVerification::answered, this,
        [this](bool success, const QString &error) {
            setPrompt({});
            std::exchange(m_current, {}).answer(success, error);
        },
        Qt::QueuedConnection);
    connect(
        verification, &FingerprintVerification::ended, this,
        [this] {
            m_verification.reset();
            startNext();
        },
        Qt::QueuedConnection);
    m_verification->start();
}

void FprintdBiometrics::setPrompt(const QString &prompt)
{
    if (std::exchange(m_prompt, prompt) != prompt)
        Q_EMIT promptChanged();
}

} // namespace quillbay::platform
