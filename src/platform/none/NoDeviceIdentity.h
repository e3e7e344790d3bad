#pragma once

#include "platform/DeviceIdentity.h"

namespace quillbay::platform {

/// A machine of which nothing is known.
class NoDeviceIdentity final : public DeviceIdentity
{
public:
    std::optional<QString> applicationDeviceId() const override { return std::nullopt; }
    QString osVersion() const override { return {}; }
    QString model() const override { return {}; }
    QSize screenSize() const override { return {}; }
};

} // namespace quillbay::platform
