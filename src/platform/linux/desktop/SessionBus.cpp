#include "platform/linux/desktop/SessionBus.h"

#include <QFile>

#include <sys/stat.h>

namespace quillbay::platform {

namespace {

bool runtimeFolderHasBus()
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat status = {};
    return folder.startsWith('/') && ::stat((folder + "/bus").constData(), &status) == 0 &&
           S_ISSOCK(status.st_mode);
}

} // namespace

QDBusConnection sessionBus()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const bool named = !address.isEmpty() && !address.startsWith("autolaunch:");
    if (named || (address.isEmpty() && runtimeFolderHasBus()))
        return QDBusConnection::sessionBus();
    return QDBusConnection(QStringLiteral("quillbay no session bus"));
}

} // namespace quillbay::platform
