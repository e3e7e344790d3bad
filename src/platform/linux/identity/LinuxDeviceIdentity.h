#pragma once

#include "platform/DeviceIdentity.h"

#include <QByteArray>

namespace quillbay::platform {

/// By /etc/machine-id, the firmware's tables or the device tree, and os-release.
class LinuxDeviceIdentity final : public DeviceIdentity
{
public:
    /// `root` is the folder in which "etc", "sys" and "proc" are looked for.
    explicit LinuxDeviceIdentity(const QString &root = {});

    std::optional<QString> applicationDeviceId() const override;
    QString osVersion() const override;
    QString model() const override;
    QSize screenSize() const override;

private:
    QString firstLine(const char *path) const;

    const QString m_root;
};

/// What sd_id128_get_machine_app_specific() makes of the content of a machine-id file for this program: the
/// first half of HMAC-SHA256 of the program's own constant, keyed by the machine id, with the bits of a
/// random UUID. Nothing where the file holds no identifier (containers and images have it empty, or
/// "uninitialized").
std::optional<QString> deviceIdFromMachineId(const QByteArray &machineId);

} // namespace quillbay::platform
