#pragma once

#include <QDBusError>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

/// The words of the fingerprint service, net.reactivated.Fprint on the system bus, as its interface
/// description has them.
namespace quillbay::platform::fprintd {

extern const QString service;
extern const QString deviceInterface;

/// The call for the path of the reader that the service offers first.
QDBusMessage getDefaultDevice();
/// A call on a reader. `owner` is the service's name, or the unique name of the process that has it.
QDBusMessage deviceCall(const QString &owner, const QString &device, const QString &method,
                        const QVariantList &arguments = {});

/// What to tell the user of a failed call; empty where that is no more than that there is no reader.
QString errorText(const QDBusError &error);
/// What to tell the user of a verification that ended with `result` without a match.
QString resultText(const QString &result);

} // namespace quillbay::platform::fprintd
