#include "platform/linux/packages/PackageSurroundings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <link.h>

namespace quillbay::platform {

namespace {

int addFile(dl_phdr_info *info, size_t, void *files)
{
    if (!info->dlpi_name || info->dlpi_name[0] != '/')
        return 0;
    // Under the name that it was loaded by it may be a link that no package has.
    const QByteArray name = info->dlpi_name;
    const QByteArray real = QFile::encodeName(QFileInfo(QFile::decodeName(name)).canonicalFilePath());
    static_cast<QByteArrayList *>(files)->append(real.isEmpty() ? name : real);
    return 0;
}

QByteArrayList filesOfProcess()
{
    QByteArrayList files;
    const QByteArray program = QFile::encodeName(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    if (program.startsWith('/'))
        files.append(program);
    dl_iterate_phdr(addFile, &files);
    return files;
}

} // namespace

PackageSurroundings PackageSurroundings::ofSession()
{
    PackageSurroundings session;
    session.toolFolders = {QStringLiteral("/usr/bin"), QStringLiteral("/usr/sbin"), QStringLiteral("/bin"),
                           QStringLiteral("/sbin")};
    session.desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    session.protectionFolders = {QStringLiteral("/etc/dnf/protected.d"),
                                 QStringLiteral("/etc/yum/protected.d")};
    session.snapFolder = QStringLiteral("/var/lib/snapd/snaps");
    session.home = QFile::encodeName(QDir::homePath());
    session.systemBus = [] { return QDBusConnection::systemBus(); };
    session.ownFiles = filesOfProcess;
    return session;
}

QString PackageSurroundings::tool(const QString &name) const
{
    for (const QString &folder : toolFolders) {
        const QString path = folder + u'/' + name;
        const QFileInfo file(path);
        if (file.isFile() && file.isExecutable())
            return path;
    }
    return {};
}

} // namespace quillbay::platform
