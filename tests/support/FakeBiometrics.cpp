#include "support/FakeBiometrics.h"

#include <utility>

namespace quillbay::testing {

void FakeBiometrics::check(Answer answer)
{
    ++checks;
    m_checks.push_back(std::move(answer));
    if (!holdsChecks)
        QMetaObject::invokeMethod(this, &FakeBiometrics::answerChecks, Qt::QueuedConnection);
}

void FakeBiometrics::answerChecks()
{
    if (std::exchange(m_known, usable) != usable)
        Q_EMIT usableChanged();
    for (const Answer &answer : std::exchange(m_checks, {})) {
        if (answer)
            answer(usable, usable ? QString() : error);
    }
}

void FakeBiometrics::evaluate(const QString &reason, Answer answer)
{
    cancel();
    reasons.append(reason);
    m_evaluation = std::move(answer);
    Q_EMIT promptChanged();
}

void FakeBiometrics::answer(bool success, const QString &text)
{
    if (!m_evaluation)
        qFatal("nobody asked for a finger");
    const Answer told = *std::exchange(m_evaluation, {});
    Q_EMIT promptChanged();
    told(success, text);
}

void FakeBiometrics::cancel()
{
    if (!m_evaluation)
        return;
    const Answer told = *std::exchange(m_evaluation, {});
    Q_EMIT promptChanged();
    QMetaObject::invokeMethod(
        this, [told] { told(false, {}); }, Qt::QueuedConnection);
}

} // namespace quillbay::testing
