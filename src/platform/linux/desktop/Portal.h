#pragma once

#include <QString>

class QDBusConnection;

/// The words of the desktop portals, as the description of org.freedesktop.portal.Request has them.
namespace quillbay::platform::portal {

extern const QString service;
extern const QString path;
extern const QString requestInterface;

/// Names one request, or one session, among all of this program.
QString newToken();
/// Where the answer to the request of that token will come: known before the request is made, so that no
/// answer can come before somebody listens. Listen without a service name: Qt would wait for the bus to tell
/// who owns it, and nobody else can guess the path.
QString requestPath(const QDBusConnection &bus, const QString &token);

} // namespace quillbay::platform::portal
