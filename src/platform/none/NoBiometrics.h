#pragma once

#include "platform/Biometrics.h"

namespace quillbay::platform {

/// A machine without biometrics: every answer is no.
class NoBiometrics final : public Biometrics
{
public:
    using Biometrics::Biometrics;

    bool isUsable() const override { return false; }
    void check(Answer answer) override;
    void evaluate(const QString &reason, Answer answer) override;
    void cancel() override {}
    QString prompt() const override { return {}; }
};

} // namespace quillbay::platform
