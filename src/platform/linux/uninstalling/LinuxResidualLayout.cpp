#include "platform/linux/uninstalling/LinuxResidualLayout.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace quillbay::platform {

namespace {

QByteArray folderOf(const char *variable, const QByteArray &fallback)
{
    const QByteArray set = cleanFolderPath(qgetenv(variable));
    return set.isEmpty() ? fallback : set;
}

QList<QByteArray> listOf(const char *variable)
{
    QList<QByteArray> result;
    for (const QByteArray &part : qgetenv(variable).split(':')) {
        if (const QByteArray folder = cleanFolderPath(part); !folder.isEmpty())
            result += folder;
    }
    return result;
}

/// What lies at these paths below the folder.
QList<QByteArray> below(const QByteArray &folder, std::initializer_list<const char *> relative)
{
    const QByteArray base = folder == "/" ? QByteArray() : folder;
    QList<QByteArray> result;
    for (const char *path : relative)
        result += base + '/' + path;
    return result;
}

QList<QByteArray> sharedFolders(const LinuxBaseFolders &folders, const ResidualLayout &layout)
{
    QList<QByteArray> result{folders.home, folders.configHome, folders.dataHome, folders.cacheHome,
                             folders.stateHome};
    result += below(folders.home, {".config", ".local/share", ".local/state", ".local/bin", ".cache",
                                   "Applications", "bin"});
    result += below(folders.dataHome, {"applications", "flatpak", "icons", "Trash"});
    result += below(folders.systemRoot, {"etc/xdg", "usr/share", "usr/local/share", "var/lib/flatpak",
                                         "var/lib/snapd", "var/lib/dpkg"});
    for (const QList<QByteArray> *roots :
         {&layout.preferences, &layout.appSupport, &layout.caches, &layout.logs, &layout.launchAgents,
          &layout.crashReports, &layout.extensions})
        result += *roots;
    for (const QList<NamedChild> *children : {&layout.containers, &layout.savedState}) {
        for (const NamedChild &child : *children)
            result += child.folder;
    }
    return result + folders.others;
}

} // namespace

QList<QByteArray> userFolders()
{
    QList<QByteArray> result;
    for (const auto location : {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
                                QStandardPaths::DownloadLocation, QStandardPaths::MusicLocation,
                                QStandardPaths::MoviesLocation, QStandardPaths::PicturesLocation,
                                QStandardPaths::TemplatesLocation, QStandardPaths::PublicShareLocation}) {
        for (const QString &folder : QStandardPaths::standardLocations(location))
            result += cleanFolderPath(QFile::encodeName(folder));
    }
    return result;
}

QByteArray cleanFolderPath(const QByteArray &path)
{
    if (!path.startsWith('/') || path.contains('\0'))
        return {};
    QByteArray result;
    for (const QByteArray &part : path.split('/')) {
        if (part == "..")
            return {};
        if (!part.isEmpty() && part != ".")
            result += '/' + part;
    }
    return result.isEmpty() ? QByteArray("/") : result;
}

LinuxBaseFolders LinuxBaseFolders::inHome(const QByteArray &home)
{
    LinuxBaseFolders folders;
    folders.home = home;
    folders.configHome = below(home, {".config"}).constFirst();
    folders.dataHome = below(home, {".local/share"}).constFirst();
    folders.cacheHome = below(home, {".cache"}).constFirst();
    folders.stateHome = below(home, {".local/state"}).constFirst();
    return folders;
}

LinuxBaseFolders LinuxBaseFolders::fromEnvironment()
{
    LinuxBaseFolders folders = inHome(folderOf("HOME", QFile::encodeName(QDir::homePath())));
    folders.configHome = folderOf("XDG_CONFIG_HOME", folders.configHome);
    folders.dataHome = folderOf("XDG_DATA_HOME", folders.dataHome);
    folders.cacheHome = folderOf("XDG_CACHE_HOME", folders.cacheHome);
    folders.stateHome = folderOf("XDG_STATE_HOME", folders.stateHome);
    for (const char *variable : {"XDG_RUNTIME_DIR", "XDG_CONFIG_DIRS", "XDG_DATA_DIRS"})
        folders.others += listOf(variable);
    return folders;
}

ResidualLayout linuxResidualLayout(const LinuxBaseFolders &folders)
{
    ResidualLayout layout;
    layout.home = folders.home;
    layout.preferences = QList<QByteArray>{folders.configHome} + below(folders.systemRoot, {"etc/xdg"});
    layout.appSupport = {folders.dataHome};
    layout.caches = {folders.cacheHome};
    layout.logs = {folders.stateHome};
    layout.containers = {
        {below(folders.home, {".var/app"}).constFirst(), NamedChild::Name::Identifier},
        {below(folders.home, {"snap"}).constFirst(), NamedChild::Name::Program},
    };
    layout.launchAgents = below(folders.configHome, {"autostart", "systemd/user"}) +
                          below(folders.systemRoot, {"etc/xdg/autostart", "etc/systemd/system"});
    layout.crashReports = below(folders.systemRoot, {"var/crash", "var/lib/systemd/coredump"});
    layout.savedState = {{folders.stateHome, NamedChild::Name::Identifier}};
    layout.extensions =
        below(folders.dataHome, {"gnome-shell/extensions", "cinnamon/extensions", "plasma/plasmoids"});
    layout.sharedFolders = sharedFolders(folders, layout);
    return layout;
}

} // namespace quillbay::platform
