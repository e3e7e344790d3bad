#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <functional>

namespace quillbay::platform {

/// One proof by finger: claims the reader, verifies, at most `tries` fingers, and releases the reader,
/// whatever happens. Used once. Thread: that of the object; nothing in here waits.
class FingerprintVerification : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        int call = 5000;    ///< For one answer of the service, in milliseconds.
        int finger = 30000; ///< From the start to the match, in milliseconds: as long as a login waits.
    };
    static constexpr int tries = 3;

    FingerprintVerification(const QDBusConnection &bus, const Limits &limits, QObject *parent = nullptr);
    /// Under way, it leaves the release to the bus.
    ~FingerprintVerification() override;

    void start();
    /// It fails without an error, and ends.
    void cancel();

Q_SIGNALS:
    /// The reader waits for a finger.
    void waiting();
    /// Sent once, as soon as it is known.
    void answered(bool success, const QString &error);
    /// Sent once, after `answered`: the reader is free, or out of reach.
    void ended();

private:
    Q_SLOT void onStatus(const QString &result, bool done);

    using Then = std::function<void(const QDBusMessage &reply)>;
    void call(QDBusMessage message, const Then &then);
    void callDevice(const QString &method, const QVariantList &arguments, const Then &then);
    /// Goes on after an answer of the service, unless all is over or it was an error.
    void proceed(const QDBusMessage &reply, const std::function<void()> &next);
    void claim();
    void follow(const QString &owner);
    void verify();
    void verifyAgain();
    void answer(bool success, const QString &error = {});
    /// Takes the next step back, once no call is out; `ended` is the last one.
    void windDown();
    void serviceEnded();

    QDBusConnection m_bus;
    const Limits m_limits;
    QDBusServiceWatcher m_watcher;
    QTimer m_fingerTimer;
    QString m_device;
    QString m_owner; ///< The process that was claimed from: a later one knows nothing of the claim.
    int m_tries = 0;
    int m_calls = 0; ///< Not answered yet.
    // From the call on, as long as the service has not refused: an answer that is late may still be a yes.
    bool m_isClaimed = false;
    bool m_isVerifying = false;
    bool m_isAnswered = false;
    bool m_hasEnded = false;
};

} // namespace quillbay::platform
