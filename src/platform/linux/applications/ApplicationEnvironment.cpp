#include "platform/linux/applications/ApplicationEnvironment.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <string_view>

namespace quillbay::platform {

namespace {

std::vector<std::string> split(std::string_view list, char separator)
{
    std::vector<std::string> parts;
    while (!list.empty()) {
        const size_t end = std::min(list.find(separator), list.size());
        if (end > 0)
            parts.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return parts;
}

QStringList absoluteFolders(const QStringList &folders)
{
    QStringList result;
    for (const QString &folder : folders) {
        if (QDir::isAbsolutePath(folder))
            result << QDir::cleanPath(folder);
    }
    return result;
}

/// The variable's absolute folders, or `fallback` where it has none, as the XDG base directory specification
/// says.
QStringList foldersOf(const char *variable, const QStringList &fallback)
{
    const QStringList set =
        absoluteFolders(QFile::decodeName(qgetenv(variable)).split(u':', Qt::SkipEmptyParts));
    return set.isEmpty() ? fallback : set;
}

void addVariants(std::vector<std::string> &result, std::string_view locale)
{
    if (locale == "C" || locale == "POSIX" || locale.substr(0, 2) == "C.")
        return;
    std::string modifier;
    if (const size_t at = locale.find('@'); at != std::string_view::npos) {
        modifier = locale.substr(at);
        locale = locale.substr(0, at);
    }
    locale = locale.substr(0, locale.find('.'));
    if (locale.empty())
        return;
    const std::string country(locale);
    const std::string language(locale.substr(0, locale.find('_')));
    for (const std::string &name : {country + modifier, country, language + modifier, language}) {
        if (std::find(result.begin(), result.end(), name) == result.end())
            result.push_back(name);
    }
}

} // namespace

ApplicationEnvironment ApplicationEnvironment::fromEnvironment()
{
    const auto variable = [](const char *name) { return qgetenv(name).toStdString(); };
    ApplicationEnvironment result;
    result.home = QDir::homePath();
    result.dataHome =
        foldersOf("XDG_DATA_HOME", {result.home + QStringLiteral("/.local/share")}).constFirst();
    result.dataDirs =
        foldersOf("XDG_DATA_DIRS", {QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")});
    result.exportDirs = {result.dataHome + QStringLiteral("/flatpak/exports/share"),
                         QStringLiteral("/var/lib/flatpak/exports/share"),
                         QStringLiteral("/var/lib/snapd/desktop")};
    result.systemBundleDirs = {QStringLiteral("/Applications"), QStringLiteral("/System/Applications")};
    result.currentDesktop = split(variable("XDG_CURRENT_DESKTOP"), ':');
    result.locales =
        localeCandidates(variable("LANGUAGE"), variable("LC_ALL"), variable("LC_MESSAGES"), variable("LANG"));
    result.path = split(variable("PATH"), ':');
    std::erase_if(result.path, [](const std::string &folder) { return folder.front() != '/'; });
    return result;
}

QString ApplicationEnvironment::userBundleDir() const
{
    return home + QStringLiteral("/Applications");
}

QStringList ApplicationEnvironment::entryDirs() const
{
    QStringList result = absoluteFolders(QStringList(dataHome) + dataDirs + exportDirs);
    result.removeDuplicates();
    for (QString &folder : result)
        folder +=
            folder == QStringLiteral("/") ? QStringLiteral("applications") : QStringLiteral("/applications");
    return result;
}

std::vector<std::string> localeCandidates(const std::string &language, const std::string &lcAll,
                                          const std::string &lcMessages, const std::string &lang)
{
    std::vector<std::string> result;
    for (const std::string &value : {language, lcAll, lcMessages, lang}) {
        if (value.empty())
            continue;
        for (const std::string &locale : split(value, ':'))
            addVariants(result, locale);
        break;
    }
    return result;
}

} // namespace quillbay::platform
