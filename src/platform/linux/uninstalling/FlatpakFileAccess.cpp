#include "platform/linux/uninstalling/FlatpakFileAccess.h"

#include "platform/Platform.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace quillbay::platform {

FlatpakFileAccess::FlatpakFileAccess(const QString &infoFile)
    : m_infoFile(infoFile)
{
}

bool FlatpakFileAccess::hasAccess() const
{
    QFile file(m_infoFile);
    if (!file.exists())
        return true;
    return file.open(QIODevice::ReadOnly) && hasHostFiles(file.readAll());
}

void FlatpakFileAccess::openSystemSettings()
{
    QDesktopServices::openUrl(QUrl(QStringLiteral("appstream://") + QLatin1String(applicationId)));
}

bool hasHostFiles(const QByteArray &flatpakInfo)
{
    bool isContext = false;
    for (const QByteArray &part : flatpakInfo.split('\n')) {
        const QByteArray line = part.trimmed();
        if (line.startsWith('['))
            isContext = line == "[Context]";
        const qsizetype equals = line.indexOf('=');
        if (!isContext || line.left(equals).trimmed() != "filesystems")
            continue;
        for (const QByteArray &entry : line.mid(equals + 1).trimmed().split(';')) {
            for (const char *name : {"host", "home"}) {
                if (entry == name || entry == QByteArray(name) + ":rw" ||
                    entry == QByteArray(name) + ":create")
                    return true;
            }
        }
    }
    return false;
}

} // namespace quillbay::platform
