#include "platform/linux/applications/LinuxApplicationSource.h"

#include "platform/linux/applications/ApplicationScan.h"
#include "platform/linux/applications/BoundedFile.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/applications/InformationList.h"

#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

double seconds(const statx_timestamp &time)
{
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

std::optional<ApplicationDetails> readBundle(const QFileInfo &bundle)
{
    if (!bundle.isDir())
        return std::nullopt;
    ApplicationDetails details;
    details.name = bundle.completeBaseName();
    const QString contents = bundle.filePath() + QStringLiteral("/Contents/");
    BoundedFile file;
    const auto bytes =
        file.read(AT_FDCWD, QFile::encodeName(contents + QStringLiteral("Info.plist")).constData());
    if (!bytes)
        return details;
    InformationList list(*bytes);
    details.identifier = list.string("CFBundleIdentifier");
    if (const QString program = list.string("CFBundleExecutable"); !program.isEmpty())
        details.executable = contents + QStringLiteral("MacOS/") + program;
    if (QString icon = list.string("CFBundleIconFile"); !icon.isEmpty()) {
        if (QFileInfo(icon).suffix().isEmpty())
            icon += QStringLiteral(".icns");
        details.icon = contents + QStringLiteral("Resources/") + icon;
    }
    return details;
}

std::optional<ApplicationDetails> readImage(const QFileInfo &image)
{
    if (!image.isFile())
        return std::nullopt;
    ApplicationDetails details;
    details.name = image.completeBaseName();
    details.executable = image.filePath();
    return details;
}

} // namespace

LinuxApplicationSource::LinuxApplicationSource(ApplicationEnvironment environment)
    : m_environment(std::move(environment))
{
}

LinuxApplicationSource LinuxApplicationSource::fromEnvironment()
{
    return LinuxApplicationSource(ApplicationEnvironment::fromEnvironment());
}

QStringList LinuxApplicationSource::folders() const
{
    const QMutexLocker lock(&m_mutex);
    return m_environment.systemBundleDirs + QStringList(m_environment.userBundleDir()) +
           m_environment.entryDirs() + m_subfolders;
}

FileDates LinuxApplicationSource::dates(const QString &path) const
{
    struct statx status = {};
    if (::statx(AT_FDCWD, QFile::encodeName(path).constData(), 0, STATX_BTIME | STATX_MTIME, &status) != 0)
        return {};
    FileDates dates;
    if (status.stx_mask & STATX_BTIME)
        dates.created = seconds(status.stx_btime);
    if (status.stx_mask & STATX_MTIME)
        dates.modified = seconds(status.stx_mtime);
    return dates;
}

std::vector<InstalledApplication> LinuxApplicationSource::scan() const
{
    ApplicationScan scan = scanApplications(m_environment);
    const QMutexLocker lock(&m_mutex);
    m_subfolders = std::move(scan.subfolders);
    return std::move(scan.applications);
}

std::optional<ApplicationDetails> LinuxApplicationSource::read(const QString &path) const
{
    const QFileInfo file(path);
    if (file.suffix() == QStringLiteral("desktop"))
        return readEntry(path);
    return file.suffix() == QStringLiteral("app") ? readBundle(file) : readImage(file);
}

QString LinuxApplicationSource::desktopFileId(const QString &path) const
{
    QString id = path.section(u'/', -1);
    for (const QString &folder : m_environment.entryDirs()) {
        if (path.startsWith(folder + u'/')) {
            id = path.sliced(folder.size() + 1).replace(u'/', u'-');
            break;
        }
    }
    return id.chopped(qsizetype(std::char_traits<char>::length(".desktop")));
}

std::optional<ApplicationDetails> LinuxApplicationSource::readEntry(const QString &path) const
{
    BoundedFile file;
    const auto text = file.read(AT_FDCWD, QFile::encodeName(path).constData());
    const auto entry = text ? parseDesktopEntry(*text, m_environment.locales) : std::nullopt;
    if (!entry || entry->type != "Application")
        return std::nullopt;
    ApplicationDetails details;
    details.identifier = entry->flatpakId.empty() ? desktopFileId(path) : entryString(entry->flatpakId);
    details.icon = entryString(entry->icon);
    details.exec = entryString(entry->exec);
    details.name = entryString(entry->name);
    details.workingDirectory = entryString(entry->workingDirectory);
    details.dbusActivatable = entry->dbusActivatable;
    details.terminal = entry->terminal;
    details.startupNotify = entry->startupNotify;
    return details;
}

} // namespace quillbay::platform
