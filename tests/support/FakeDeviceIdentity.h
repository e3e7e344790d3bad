#pragma once

#include "platform/DeviceIdentity.h"

#include <atomic>

namespace quillbay::testing {

/// A machine as the test describes it, and a count of how often its identifier was asked for.
class FakeDeviceIdentity final : public platform::DeviceIdentity
{
public:
    std::optional<QString> id = QStringLiteral("11111111-2222-4333-8444-555555555555");
    mutable std::atomic<int> idReads = 0;

    std::optional<QString> applicationDeviceId() const override
    {
        ++idReads;
        return id;
    }
    QString osVersion() const override { return QStringLiteral("Test System 12"); }
    QString model() const override { return QStringLiteral("Acme Book 14"); }
    QSize screenSize() const override { return {1920, 1080}; }
};

} // namespace quillbay::testing
