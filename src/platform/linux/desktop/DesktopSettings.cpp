#include "platform/linux/desktop/DesktopSettings.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QList>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

constexpr qsizetype maximumFileSize = 256 * 1024;
constexpr double halfBright = 127.5;

using Values = QHash<QByteArray, QByteArray>; // "group/key" to value

/// Group and key files as GTK and KDE write them; lines that are neither are skipped.
Values parseKeyFile(const QByteArray &content)
{
    Values values;
    QByteArray group;
    for (const QByteArray &raw : content.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('[') && line.endsWith(']')) {
            group = line.mid(1, line.size() - 2);
        } else if (const qsizetype equals = line.indexOf('='); equals > 0 && !line.startsWith('#')) {
            values.insert(group + '/' + line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
        }
    }
    return values;
}

std::optional<bool> boolean(const QByteArray &value)
{
    const QByteArray lower = value.toLower();
    if (lower == "true" || lower == "1" || lower == "yes")
        return true;
    if (lower == "false" || lower == "0" || lower == "no")
        return false;
    return std::nullopt;
}

bool namesDark(const QByteArray &theme)
{
    const QByteArray lower = theme.toLower();
    return lower.endsWith("-dark") || lower.endsWith(":dark");
}

QString themeName(const QByteArray &value)
{
    const QString name = QString::fromUtf8(value);
    return isThemeName(name) ? name : QString();
}

/// Whether "red,green,blue" is darker than the middle; nothing if it is not a colour.
std::optional<bool> isDarkColor(const QByteArray &value)
{
    const QList<QByteArray> parts = value.split(',');
    if (parts.size() < 3)
        return std::nullopt;
    std::array<int, 3> channels = {};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        bool ok = false;
        channels[i] = parts[static_cast<qsizetype>(i)].trimmed().toInt(&ok);
        if (!ok || channels[i] < 0 || channels[i] > 255)
            return std::nullopt;
    }
    // Luma of ITU-R BT.601.
    return 0.299 * channels[0] + 0.587 * channels[1] + 0.114 * channels[2] < halfBright;
}

QByteArray readRegularFile(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return {};
    struct stat status = {};
    QByteArray content;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        content.resize(maximumFileSize);
        qsizetype filled = 0;
        while (filled < maximumFileSize) {
            const ssize_t count = ::read(descriptor, content.data() + filled,
                                         static_cast<std::size_t>(maximumFileSize - filled));
            if (count > 0)
                filled += count;
            else if (count == 0 || errno != EINTR)
                break;
        }
        content.truncate(filled);
    }
    ::close(descriptor);
    return content;
}

void fillIn(DesktopSettings &settings, const DesktopSettings &more)
{
    if (!settings.dark)
        settings.dark = more.dark;
    if (!settings.reducedMotion)
        settings.reducedMotion = more.reducedMotion;
    if (settings.iconTheme.isEmpty())
        settings.iconTheme = more.iconTheme;
}

} // namespace

DesktopSettingsSource DesktopSettingsSource::fromEnvironment()
{
    const QString configured = qEnvironmentVariable("XDG_CONFIG_HOME");
    DesktopSettingsSource source;
    source.configFolder =
        QDir::isAbsolutePath(configured) ? configured : QDir::homePath() + QStringLiteral("/.config");
    source.gtkTheme = qgetenv("GTK_THEME");
    source.kde = qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE");
    return source;
}

bool isThemeName(const QString &name)
{
    constexpr qsizetype maximumLength = 255;
    return !name.isEmpty() && name.size() <= maximumLength && !name.startsWith(QLatin1Char('.')) &&
           !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null);
}

DesktopSettings parseGtkSettings(const QByteArray &content)
{
    const Values values = parseKeyFile(content);
    DesktopSettings settings;
    settings.dark = boolean(values.value("Settings/gtk-application-prefer-dark-theme"));
    const QByteArray theme = values.value("Settings/gtk-theme-name");
    if (namesDark(theme))
        settings.dark = true;
    else if (!settings.dark && !theme.isEmpty())
        settings.dark = false;
    if (const auto animations = boolean(values.value("Settings/gtk-enable-animations")))
        settings.reducedMotion = !*animations;
    settings.iconTheme = themeName(values.value("Settings/gtk-icon-theme-name"));
    return settings;
}

DesktopSettings parseKdeGlobals(const QByteArray &content)
{
    const Values values = parseKeyFile(content);
    DesktopSettings settings;
    settings.dark = isDarkColor(values.value("Colors:Window/BackgroundNormal"));
    if (const QByteArray scheme = values.value("General/ColorScheme"); !settings.dark && !scheme.isEmpty())
        settings.dark = scheme.toLower().contains("dark");
    bool isNumber = false;
    if (const double factor = values.value("KDE/AnimationDurationFactor").toDouble(&isNumber); isNumber)
        settings.reducedMotion = factor <= 0;
    settings.iconTheme = themeName(values.value("Icons/Theme"));
    return settings;
}

DesktopSettings readDesktopSettings(const DesktopSettingsSource &source)
{
    DesktopSettings settings;
    if (!source.gtkTheme.isEmpty())
        settings.dark = namesDark(source.gtkTheme);
    const auto kde = [&source] {
        return parseKdeGlobals(readRegularFile(source.configFolder + QStringLiteral("/kdeglobals")));
    };
    if (source.kde)
        fillIn(settings, kde());
    for (const QString &version : {QStringLiteral("gtk-4.0"), QStringLiteral("gtk-3.0")}) {
        const QString path =
            source.configFolder + QLatin1Char('/') + version + QStringLiteral("/settings.ini");
        fillIn(settings, parseGtkSettings(readRegularFile(path)));
    }
    if (!source.kde)
        fillIn(settings, kde());
    return settings;
}

} // namespace quillbay::platform
