#pragma once

#include "foundation/ObservableObject.h"
#include "foundation/PreferenceStore.h"

#include <QString>

#include <functional>

class QJSValue;

namespace quillbay {

namespace platform {
class Biometrics;
}

/// The lock of the hidden list: what the view model has of it, and all that the lock's screens need to know
/// of the view model.
///
/// It is a curtain for one user on one machine: the password is kept among the preferences as it was entered,
/// and nothing is encrypted. Biometrics are asked anew for each operation, without waiting: an operation that
/// needs them returns at once and goes on when they have answered. After each evaluation, whatever came of
/// it, `returnToFrontRequested` follows, since asking for a finger may have taken the window its place. An
/// evaluation that gives way to a later one is not heard of again.
///
/// What goes on later never opens the list of another visit: leaving the list ends a running evaluation, and
/// an answer from before opens nothing.
///
/// Stored in the domain "standard": "quillbay_hidden_password", a string, where an empty one is none; and
/// "quillbay_hidden_use_touchid", a boolean. Thread: main thread.
class SecurityLock : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(
        bool isHiddenUnlocked READ isHiddenUnlocked WRITE setIsHiddenUnlocked NOTIFY isHiddenUnlockedChanged)
    Q_PROPERTY(bool isSecurityPasswordSet READ isSecurityPasswordSet NOTIFY securityChanged)
    Q_PROPERTY(bool usesTouchID READ usesTouchID NOTIFY securityChanged)
    Q_PROPERTY(bool canUseBiometrics READ canUseBiometrics NOTIFY canUseBiometricsChanged)
    Q_PROPERTY(QString biometricPrompt READ biometricPrompt NOTIFY biometricPromptChanged)

public:
    /// Called with a message for the user where it failed.
    using Completion = std::function<void(bool success, const QString &message)>;

    /// The biometrics must outlive this object.
    SecurityLock(platform::Biometrics &biometrics, const PreferenceStore &preferences,
                 QObject *parent = nullptr);

    /// The hidden list has been opened. Never stored: every start begins with it closed.
    bool isHiddenUnlocked() const { return m_isHiddenUnlocked; }
    void setIsHiddenUnlocked(bool unlocked);
    /// Whether a password guards the hidden list, and whether the screen that asks for it offers biometrics
    /// as well: both by what is stored now.
    bool isSecurityPasswordSet() const;
    bool usesTouchID() const;
    /// There is a password, and the list is closed: nothing may show what is hidden.
    bool isLocked() const { return !m_isHiddenUnlocked && isSecurityPasswordSet(); }
    /// By what is known; for drawing.
    bool canUseBiometrics() const;
    /// What for the user is being asked for a finger, where it is the program that has to say so; or empty.
    QString biometricPrompt() const;

    /// Stores both and opens the list; where biometrics are usable, after their success alone, also where
    /// `useTouchID` is false. `completion` is called only if they were asked.
    void setSecurityPassword(const QString &password, bool useTouchID, const Completion &completion);
    /// Opens the list where the password is exactly the stored one, or empty while none is stored.
    Q_INVOKABLE bool checkPassword(const QString &password);
    /// Opens the list after a biometric success; says nothing otherwise.
    Q_INVOKABLE void tryTouchID();
    /// Takes the password away after a biometric success.
    void resetPasswordUsingTouchID(const Completion &completion);
    /// Takes the password away and closes the list. What is hidden stays hidden.
    Q_INVOKABLE void disableSecurity();
    /// As `resetPasswordUsingTouchID`, for a list that is open.
    void disableSecurityWithTouchID(const Completion &completion);
    /// For the button in the open list: the same where biometrics are usable, `disableSecurity` where not.
    Q_INVOKABLE void askAndDisableSecurity();
    /// Ends the evaluation under way, as one that failed.
    Q_INVOKABLE void cancelBiometrics();

    /// The completion may be a function of two arguments, or nothing.
    Q_INVOKABLE void setSecurityPassword(const QString &password, bool useTouchID,
                                         const QJSValue &completion);
    Q_INVOKABLE void resetPasswordUsingTouchID(const QJSValue &completion);

Q_SIGNALS:
    void isHiddenUnlockedChanged();
    /// The password or the flag beside it.
    void securityChanged();
    void canUseBiometricsChanged();
    void biometricPromptChanged();
    /// The program is to come forward, with its window.
    void returnToFrontRequested();

protected:
    /// The list is being selected: asks anew what the machine can do, and has the stored values read again.
    void enterHiddenList();
    /// Anything else is being selected: closes the list, and ends what was asked for in it. Answers whether
    /// it was open. That it is closed is announced only by the second: while the hidden list is still the
    /// selected one, the screen that opens it would come up.
    bool leaveHiddenList();
    void announceLeaving();

private:
    using Handler = std::function<void(bool success, const QString &error)>;
    void evaluate(const QString &reason, const Handler &handle);
    void disableAfterEvaluation(const QString &reason, const QString &otherwise,
                                const Completion &completion);
    void open();

    platform::Biometrics &m_biometrics;
    PreferenceStore m_security;
    bool m_isHiddenUnlocked = false;
    bool m_isLeaving = false; ///< Closed, and not announced.
    int m_visit = 0;          ///< Another one each time the list is left.
    int m_evaluation = 0;     ///< The latest one's number.
};

} // namespace quillbay
