#pragma once

#include <QDBusConnection>
#include <QString>

namespace quillbay::platform {

/// Name of the scope for a launched application, as desktops name them: `app-quillbay-ID-PID.scope`, the id
/// escaped by the service manager's rule and cut where the name would be longer than a unit's may be.
QString scopeName(const QString &identifier, qint64 pid);

/// Asks the user's service manager to put the process into a scope of its own, so that it does not end with
/// our unit and portals know it for what it is. Where no service manager is on the bus none is started, and
/// the process stays where it is. Nothing waits for the answer.
void moveToScope(const QDBusConnection &bus, const QString &identifier, qint64 pid);

} // namespace quillbay::platform
