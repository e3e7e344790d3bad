#pragma once

#include "platform/Biometrics.h"
#include "platform/linux/biometrics/FingerprintVerification.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quillbay::platform {

/// Fingerprints through fprintd, which the bus starts when it is asked and which ends by itself soon after.
/// Usable means that there is a reader and the user has fingers enrolled.
///
/// It asks when it starts, and again when another process takes the service's name. That the service ends is
/// no news as long as the bus can start it: asking would start it again and again.
class FprintdBiometrics final : public Biometrics
{
    Q_OBJECT

public:
    using Limits = FingerprintVerification::Limits;

    /// `openBus` gives the system bus. It runs on a worker: connecting waits for the bus.
    explicit FprintdBiometrics(std::function<QDBusConnection()> openBus, const Limits &limits = {},
                               QObject *parent = nullptr);
    ~FprintdBiometrics() override;

    bool isUsable() const override { return m_isUsable; }
    void check(Answer answer) override;
    void evaluate(const QString &reason, Answer answer) override;
    void cancel() override;
    QString prompt() const override { return m_prompt; }

private:
    struct Request
    {
        QString reason;
        Answer answer;
    };

    void adopt(const QDBusConnection &bus);
    void ownerChanged(const QString &owner);
    void ask();
    void askForFingers(const QString &device);
    void conclude(bool usable, const QString &error = {});
    void setUsable(bool usable);
    void startNext();
    void setPrompt(const QString &prompt);

    const Limits m_limits;
    std::optional<QDBusConnection> m_bus; ///< None until the worker has it.
    QDBusServiceWatcher m_watcher;
    std::vector<Answer> m_asking; ///< Who waits for the check under way.
    std::unique_ptr<FingerprintVerification> m_verification;
    Request m_current;
    std::optional<Request> m_next; ///< Waits for the bus, or for the reader to be free again.
    QString m_prompt;
    bool m_isUsable = false;
};

} // namespace quillbay::platform
