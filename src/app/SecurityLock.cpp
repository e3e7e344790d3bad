#include "app/SecurityLock.h"

#include "platform/Biometrics.h"
#include "platform/DesktopWording.h"

#include <QJSValue>
#include <QPointer>

#include <utility>

namespace quillbay {

using platform::desktopWording;

namespace {

QString passwordKey()
{
    return QStringLiteral("quillbay_hidden_password");
}

QString touchIDKey()
{
    return QStringLiteral("quillbay_hidden_use_touchid");
}

void tell(const SecurityLock::Completion &completion, bool success, const QString &error = {},
          const QString &otherwise = {})
{
    if (completion)
        completion(success, success || !error.isEmpty() ? error : desktopWording(otherwise));
}

SecurityLock::Completion completionOf(const QJSValue &function)
{
    if (!function.isCallable())
        return {};
    return [function](bool success, const QString &message) {
        const QJSValue result = function.call({success, message});
        if (result.isError())
            qWarning("the end of an operation was not heard: %s", qUtf8Printable(result.toString()));
    };
}

} // namespace

SecurityLock::SecurityLock(platform::Biometrics &biometrics, const PreferenceStore &preferences,
                           QObject *parent)
    : ObservableObject(parent)
    , m_biometrics(biometrics)
    , m_security(preferences)
{
    connect(&m_biometrics, &platform::Biometrics::usableChanged, this,
            &SecurityLock::canUseBiometricsChanged);
    connect(&m_biometrics, &platform::Biometrics::promptChanged, this, &SecurityLock::biometricPromptChanged);
}

void SecurityLock::setIsHiddenUnlocked(bool unlocked)
{
    if (unlocked == m_isHiddenUnlocked)
        return;
    m_biometrics.cancel(); // what was asked for on the other side of the door
    publish(m_isHiddenUnlocked, unlocked, &SecurityLock::isHiddenUnlockedChanged);
}

bool SecurityLock::isSecurityPasswordSet() const
{
    return !m_security.string(passwordKey()).value_or(QString()).isEmpty();
}

bool SecurityLock::usesTouchID() const
{
    return m_security.boolean(touchIDKey()).value_or(false);
}

bool SecurityLock::canUseBiometrics() const
{
    return m_biometrics.isUsable();
}

QString SecurityLock::biometricPrompt() const
{
    return m_biometrics.prompt();
}

void SecurityLock::enterHiddenList()
{
    m_biometrics.refresh();
    Q_EMIT securityChanged();
}

bool SecurityLock::leaveHiddenList()
{
    ++m_visit;
    m_biometrics.cancel();
    if (!m_isHiddenUnlocked)
        return false;
    Q_EMIT objectWillChange();
    m_isHiddenUnlocked = false;
    m_isLeaving = true;
    return true;
}

void SecurityLock::announceLeaving()
{
    if (std::exchange(m_isLeaving, false))
        Q_EMIT isHiddenUnlockedChanged();
}

void SecurityLock::evaluate(const QString &reason, const Handler &handle)
{
    const auto heard = [self = QPointer(this), evaluation = ++m_evaluation, handle](bool success,
                                                                                    const QString &error) {
        if (!success && self && evaluation != self->m_evaluation)
            return;
        handle(success, error);
        if (self)
            Q_EMIT self->returnToFrontRequested();
    };
    m_biometrics.evaluate(desktopWording(reason), heard);
}

void SecurityLock::open()
{
    // Before the password is known to be there: the list comes without a screen that asks for it.
    setIsHiddenUnlocked(true);
    Q_EMIT securityChanged();
    Q_EMIT objectWillChange();
}

void SecurityLock::setSecurityPassword(const QString &password, bool useTouchID, const Completion &completion)
{
    const auto keep = [self = QPointer(this), preferences = m_security, visit = m_visit, password,
                       useTouchID] {
        PreferenceStore store = preferences;
        store.setString(passwordKey(), password);
        if (!self)
            return;
        store.setBoolean(touchIDKey(), useTouchID);
        if (visit == self->m_visit)
            self->open();
        else
            Q_EMIT self->securityChanged();
    };
    const auto handle = [keep, completion](bool success, const QString &error) {
        if (success)
            keep();
        tell(completion, success, error, tr("Touch ID setup failed"));
    };
    m_biometrics.check([self = QPointer(this), visit = m_visit, keep, handle](bool usable, const QString &) {
        if (!usable)
            keep();
        else if (self && visit == self->m_visit)
            self->evaluate(tr("Authenticate with Touch ID to register new security password"), handle);
    });
}

bool SecurityLock::checkPassword(const QString &password)
{
    if (password != m_security.string(passwordKey()).value_or(QString()))
        return false;
    setIsHiddenUnlocked(true);
    return true;
}

void SecurityLock::tryTouchID()
{
    const auto isWanted = [self = QPointer(this), visit = m_visit] {
        return self && visit == self->m_visit && !self->m_isHiddenUnlocked;
    };
    m_biometrics.check([this, isWanted](bool usable, const QString &) {
        if (!usable || !isWanted())
            return;
        evaluate(tr("Unlock Hidden Items"), [this, isWanted](bool success, const QString &) {
            if (!success || !isWanted())
                return;
            setIsHiddenUnlocked(true);
            Q_EMIT objectWillChange();
        });
    });
}

void SecurityLock::resetPasswordUsingTouchID(const Completion &completion)
{
    m_biometrics.check(
        [self = QPointer(this), visit = m_visit, completion](bool usable, const QString &error) {
            if (!usable)
                tell(completion, false, error, tr("Touch ID is not available on this device"));
            else if (self && visit == self->m_visit)
                self->disableAfterEvaluation(tr("Authenticate to Reset Password"),
                                             tr("Touch ID Authentication failed"), completion);
        });
}

void SecurityLock::disableSecurityWithTouchID(const Completion &completion)
{
    disableAfterEvaluation(tr("Authenticate to disable password lock"), tr("Touch ID verification failed"),
                           completion);
}

void SecurityLock::disableAfterEvaluation(const QString &reason, const QString &otherwise,
                                          const Completion &completion)
{
    evaluate(reason, [self = QPointer(this), otherwise, completion](bool success, const QString &error) {
        if (success && self)
            self->disableSecurity();
        tell(completion, success, error, otherwise);
    });
}

void SecurityLock::disableSecurity()
{
    m_security.remove(passwordKey());
    m_security.setBoolean(touchIDKey(), false);
    // Before the list closes: there is no password any more that a screen could ask for.
    Q_EMIT securityChanged();
    setIsHiddenUnlocked(false);
    Q_EMIT objectWillChange();
}

void SecurityLock::askAndDisableSecurity()
{
    m_biometrics.check([self = QPointer(this), visit = m_visit](bool usable, const QString &) {
        if (!self || visit != self->m_visit || !self->m_isHiddenUnlocked)
            return;
        if (usable)
            self->disableSecurityWithTouchID({});
        else
            self->disableSecurity();
    });
}

void SecurityLock::cancelBiometrics()
{
    m_biometrics.cancel();
}

void SecurityLock::setSecurityPassword(const QString &password, bool useTouchID, const QJSValue &completion)
{
    setSecurityPassword(password, useTouchID, completionOf(completion));
}

void SecurityLock::resetPasswordUsingTouchID(const QJSValue &completion)
{
    resetPasswordUsingTouchID(completionOf(completion));
}

} // namespace quillbay
