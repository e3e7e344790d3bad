#include "BusPeer.h"

namespace quillbay::testing {

BusPeer::BusPeer(QDBusConnection connection, const QString &name, const QString &root)
{
    if (!connection.registerVirtualObject(root, this, QDBusConnection::SubPath) ||
        !connection.registerService(name))
        qFatal("cannot own %s", qPrintable(name));
}

QString BusPeer::introspect(const QString &) const
{
    return {};
}

bool BusPeer::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    calls.push_back(message);
    return connection.send(error.isEmpty() ? message.createReply()
                                           : message.createErrorReply(error, QStringLiteral("as told")));
}

} // namespace quillbay::testing
