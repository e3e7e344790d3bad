#include "uninstaller/RemovalGuard.h"

#include "uninstaller/PlainPath.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <memory>

#include <pwd.h>
#include <unistd.h>

namespace quillbay {

namespace {

QByteArray base(const char *variable, const QByteArray &otherwise)
{
    const QByteArray set = qgetenv(variable);
    return set.startsWith('/') ? set : otherwise;
}

QList<QByteArray> bases(const char *variable, const QByteArray &otherwise)
{
    const QByteArray set = qgetenv(variable);
    return (set.isEmpty() ? otherwise : set).split(':');
}

} // namespace

RemovalGuard::RemovalGuard(const QList<QByteArray> &folders)
{
    const auto addWithAbove = [this](const QByteArray &folder) {
        for (qsizetype end = folder.size(); end > 0; end = folder.lastIndexOf('/', end - 1)) {
            if (const auto file = FileIdentity::of(folder.left(end)); file && !m_files.contains(*file))
                m_files.append(*file);
            if (end == 1)
                break;
        }
    };
    for (const QByteArray &folder : folders + QList<QByteArray>{"/"}) {
        if (!folder.startsWith('/'))
            continue;
        addWithAbove(folder);
        const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(folder.constData(), nullptr),
                                                                   &std::free);
        if (resolved)
            addWithAbove(resolved.get());
    }
    if (const auto root = FileIdentity::of("/"); root && !m_files.contains(*root))
        m_files.append(*root);
}

RemovalGuard RemovalGuard::ofSession()
{
    const QByteArray home = QFile::encodeName(QDir::homePath());
    const QByteArray config = base("XDG_CONFIG_HOME", home + "/.config");
    const QByteArray data = base("XDG_DATA_HOME", home + "/.local/share");
    const QByteArray state = base("XDG_STATE_HOME", home + "/.local/state");
    QList<QByteArray> folders = {
        home,
        config,
        config + "/autostart",
        config + "/systemd/user",
        data,
        data + "/applications",
        data + "/Trash/files",
        data + "/Trash/info",
        state,
        state + "/quillbay",
        base("XDG_CACHE_HOME", home + "/.cache"),
        base("XDG_RUNTIME_DIR", {}),
        home + "/.var/app",
        home + "/snap",
        home + "/Applications",
        home + "/Library/Application Support",
        "/Applications",
        "/etc/xdg/autostart",
        "/etc/systemd/system",
        "/var/crash",
        "/var/lib/systemd/coredump",
    };
    folders += bases("XDG_CONFIG_DIRS", "/etc/xdg");
    folders += bases("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    if (const passwd *account = getpwuid(getuid()))
        folders.append(account->pw_dir);
    return RemovalGuard(folders);
}

bool RemovalGuard::refuses(const QByteArray &path) const
{
    if (!isPlainPath(path))
        return true;
    const auto file = FileIdentity::of(path);
    return !file || m_files.contains(*file);
}

} // namespace quillbay
