#include "platform/linux/desktop/Portal.h"

#include <QDBusConnection>
#include <QUuid>

namespace quillbay::platform::portal {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

QString newToken()
{
    return QStringLiteral("quillbay_") + QUuid::createUuid().toString(QUuid::Id128);
}

QString requestPath(const QDBusConnection &bus, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    return path + QStringLiteral("/request/%1/%2").arg(sender, token);
}

} // namespace quillbay::platform::portal
