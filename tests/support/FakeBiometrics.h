#pragma once

#include "platform/Biometrics.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace quillbay::testing {

/// Biometrics whose user and machine are the test: `usable` and `error` answer each check from the event
/// loop, unless `holdsChecks`; the evaluation under way waits for `answer`.
class FakeBiometrics final : public platform::Biometrics
{
public:
    using Biometrics::Biometrics;

    bool usable = false;
    QString error; ///< Of a check that says no.
    bool holdsChecks = false;
    int checks = 0;      ///< Asked for so far.
    QStringList reasons; ///< Of all evaluations so far.

    /// Answers the checks that were held back.
    void answerChecks();
    bool isEvaluating() const { return m_evaluation.has_value(); }
    /// Ends the evaluation under way, at once.
    void answer(bool success, const QString &text = {});

    bool isUsable() const override { return m_known; }
    void check(Answer answer) override;
    void evaluate(const QString &reason, Answer answer) override;
    void cancel() override;
    QString prompt() const override { return m_evaluation ? reasons.last() : QString(); }

private:
    std::vector<Answer> m_checks;
    std::optional<Answer> m_evaluation;
    bool m_known = false;
};

} // namespace quillbay::testing
