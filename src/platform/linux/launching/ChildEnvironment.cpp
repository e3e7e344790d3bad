#include "platform/linux/launching/ChildEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

#include <unistd.h>

namespace quillbay::platform {

namespace {

constexpr const char *privatePrefixes[] = {"LD_", "QML", "QSG_", "QT_", "QV4_", "QUILLBAY_"};

constexpr const char *sessionSettings[] = {
    "QT_ACCESSIBILITY",
    "QT_AUTO_SCREEN_SCALE_FACTOR",
    "QT_ENABLE_HIGHDPI_SCALING",
    "QT_FONT_DPI",
    "QT_IM_MODULE",
    "QT_IM_MODULES",
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON",
    "QT_QPA_PLATFORMTHEME",
    "QT_SCALE_FACTOR",
    "QT_SCALE_FACTOR_ROUNDING_POLICY",
    "QT_SCREEN_SCALE_FACTORS",
    "QT_STYLE_OVERRIDE",
    "QT_WAYLAND_DECORATION",
};

constexpr const char *handshakes[] = {
    "APPDIR",
    "APPIMAGE",
    "ARGV0",
    "BAMF_DESKTOP_FILE_HINT",
    "DBUS_STARTER_ADDRESS",
    "DBUS_STARTER_BUS_TYPE",
    "DESKTOP_STARTUP_ID",
    "GIO_LAUNCHED_DESKTOP_FILE",
    "GIO_LAUNCHED_DESKTOP_FILE_PID",
    "INVOCATION_ID",
    "JOURNAL_STREAM",
    "LISTEN_FDNAMES",
    "LISTEN_FDS",
    "LISTEN_PID",
    "MANAGERPID",
    "MEMORY_PRESSURE_WATCH",
    "MEMORY_PRESSURE_WRITE",
    "NOTIFY_SOCKET",
    "OLDPWD",
    "OWD",
    "SYSTEMD_EXEC_PID",
    "WATCHDOG_PID",
    "WATCHDOG_USEC",
    "WAYLAND_SOCKET",
    "XDG_ACTIVATION_TOKEN",
    "_",
};

template <std::size_t Size>
bool isAmong(const char *const (&names)[Size], const QByteArray &name)
{
    return std::any_of(std::begin(names), std::end(names), [&](const char *each) { return name == each; });
}

bool isPrivate(const QByteArray &name)
{
    if (isAmong(handshakes, name))
        return true;
    return !isAmong(sessionSettings, name) &&
           std::any_of(std::begin(privatePrefixes), std::end(privatePrefixes),
                       [&](const char *prefix) { return name.startsWith(prefix); });
}

QByteArray currentBlock()
{
    QByteArray block;
    for (char **variable = environ; variable && *variable; ++variable)
        block.append(*variable).append('\0');
    return block;
}

} // namespace

Environment startEnvironment()
{
    QFile file(QStringLiteral("/proc/self/environ"));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray block = file.readAll();
        if (!block.isEmpty())
            return parseEnvironment(block);
    }
    return parseEnvironment(currentBlock());
}

Environment parseEnvironment(const QByteArray &block)
{
    Environment result;
    for (const QByteArray &variable : block.split('\0')) {
        const qsizetype equals = variable.indexOf('=');
        if (equals <= 0)
            continue;
        const QByteArray name = variable.left(equals);
        if (!result.contains(name))
            result.insert(name, variable.mid(equals + 1));
    }
    return result;
}

Environment childEnvironment(const Environment &ours)
{
    Environment result;
    for (auto variable = ours.cbegin(); variable != ours.cend(); ++variable) {
        if (!isPrivate(variable.key()))
            result.insert(variable.key(), variable.value());
    }
    return result;
}

QString findProgram(const QString &name, const Environment &environment, const QString &workingDirectory)
{
    if (name.contains(u'/')) {
        const QFileInfo file(QDir(workingDirectory), name);
        return file.isFile() && file.isExecutable() ? file.absoluteFilePath() : QString();
    }
    const QString path = QFile::decodeName(environment.value("PATH", "/usr/local/bin:/usr/bin:/bin"));
    return QStandardPaths::findExecutable(name, path.split(u':', Qt::SkipEmptyParts));
}

} // namespace quillbay::platform
