#pragma once

#include <QSize>
#include <QString>

#include <optional>

namespace quillbay::platform {

/// What is said of this machine when usage is counted: enough to tell installations apart, and nothing that
/// leads from one program's records to another's.
///
/// Thread: any, but for `screenSize`, which belongs to the main thread. The others read a few small files.
class DeviceIdentity
{
public:
    virtual ~DeviceIdentity() = default;

    /// An identifier of the machine that this program alone derives: a UUID in the form of `uuidString`, the
    /// same at every start, from which neither the machine's own identifier nor what other programs derive
    /// from it can be told. Nothing where the machine has none.
    virtual std::optional<QString> applicationDeviceId() const = 0;

    /// The system's name and version for people; empty where unknown.
    virtual QString osVersion() const = 0;

    /// Maker and name of the machine for people; empty where unknown. Never a serial number.
    virtual QString model() const = 0;

    /// The main screen in device pixels; empty without one.
    virtual QSize screenSize() const = 0;
};

} // namespace quillbay::platform
