#include "platform/linux/icons/IconThemeIndex.h"

#include "platform/linux/icons/IconFile.h"

#include <QDir>
#include <QFileInfo>
#include <QMutexLocker>

#include <algorithm>
#include <utility>

namespace quillbay::platform {

namespace {

constexpr qsizetype mostCandidates = 8;
constexpr qint64 largestDescription = 1024 * 1024;
constexpr size_t mostThemes = 32;
constexpr int deepestInheritance = 16;

QString hicolor()
{
    return QStringLiteral("hicolor");
}

QStringList dataFolders()
{
    QString own = qEnvironmentVariable("XDG_DATA_HOME");
    if (!own.startsWith(QLatin1Char('/')))
        own = QDir::homePath() + QStringLiteral("/.local/share");
    QString listed = qEnvironmentVariable("XDG_DATA_DIRS");
    if (listed.isEmpty())
        listed = QStringLiteral("/usr/local/share:/usr/share");
    QStringList folders = QStringList{own} + listed.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    folders << own + QStringLiteral("/flatpak/exports/share")
            << QStringLiteral("/var/lib/flatpak/exports/share") << QStringLiteral("/var/lib/snapd/desktop");
    for (QString &folder : folders)
        folder = QDir::cleanPath(folder);
    folders.removeIf([](const QString &folder) { return !QDir::isAbsolutePath(folder); });
    folders.removeDuplicates();
    return folders;
}

bool isThemeName(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.startsWith(QLatin1Char('.'));
}

QString stripped(const QString &name)
{
    for (const QLatin1String extension :
         {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (name.endsWith(extension, Qt::CaseInsensitive))
            return name.chopped(extension.size());
    }
    return name;
}

} // namespace

IconThemeIndex::Folders IconThemeIndex::standardFolders()
{
    Folders folders;
    folders.themes << QDir::homePath() + QStringLiteral("/.icons");
    for (const QString &folder : dataFolders()) {
        folders.themes << folder + QStringLiteral("/icons");
        folders.pictures << folder + QStringLiteral("/pixmaps");
    }
    return folders;
}

IconThemeIndex::IconThemeIndex(Folders folders, std::chrono::milliseconds recheckInterval)
    : m_folders(std::move(folders))
    , m_recheckInterval(recheckInterval)
{
}

void IconThemeIndex::setTheme(const QString &name)
{
    const QMutexLocker lock(&m_wishes);
    if (m_wantedTheme == name)
        return;
    m_wantedTheme = name;
    m_outdated = true;
}

void IconThemeIndex::refresh()
{
    const QMutexLocker lock(&m_wishes);
    m_mayHaveChanged = true;
}

QStringList IconThemeIndex::find(const QString &name, int edge)
{
    const QByteArray key = QFile::encodeName(stripped(name));
    if (key.isEmpty() || key.contains('/'))
        return {};
    const QMutexLocker lock(&m_reading);
    bool mayHaveChanged = false;
    {
        const QMutexLocker wishes(&m_wishes);
        m_theme = m_wantedTheme;
        if (std::exchange(m_outdated, false))
            m_chain.clear();
        mayHaveChanged = std::exchange(m_mayHaveChanged, false);
    }
    if (m_chain.empty() || (mayHaveChanged && changedOnDisk()))
        reset();
    QStringList files = look(key, edge);
    if (files.isEmpty() && isDueForCheck() && changedOnDisk()) {
        reset();
        files = look(key, edge);
    }
    return files;
}

QStringList IconThemeIndex::look(const QByteArray &name, int edge)
{
    QStringList files;
    for (Theme &theme : m_chain) {
        files += listing(theme).find(name, edge);
        if (files.size() >= mostCandidates)
            return files.first(mostCandidates);
    }
    files += m_unthemed->find(name, edge);
    return files.first(std::min(files.size(), mostCandidates));
}

bool IconThemeIndex::isDueForCheck() const
{
    return std::chrono::steady_clock::now() - m_lastCheck >= m_recheckInterval;
}

bool IconThemeIndex::changedOnDisk()
{
    m_lastCheck = std::chrono::steady_clock::now();
    return m_unthemed->isStale() || std::any_of(m_chain.cbegin(), m_chain.cend(), [](const Theme &theme) {
               return theme.listing && theme.listing->isStale();
           });
}

void IconThemeIndex::reset()
{
    m_chain.clear();
    openTheme(isInstalled(m_theme) ? m_theme : fallbackTheme(), 0);
    m_chain.push_back({hicolor(), describe(hicolor()), nullptr});
    if (m_chain.back().description.folders.empty())
        m_chain.back().description = usualHicolorTheme();

    // An unthemed picture says nothing of its size: the usual one is assumed.
    const IconThemeFolder kind = {{}, 48, 48, 48, IconThemeFolder::Type::Fixed, true};
    m_unthemed = std::make_unique<IconListing>();
    for (const QString &folder : m_folders.themes + m_folders.pictures)
        m_unthemed->add(QFile::encodeName(folder), kind);
    m_lastCheck = std::chrono::steady_clock::now();
}

void IconThemeIndex::openTheme(const QString &name, int depth)
{
    const auto isOpen = [&name](const Theme &theme) { return theme.name == name; };
    if (name == hicolor() || !isInstalled(name) || depth > deepestInheritance ||
        m_chain.size() >= mostThemes || std::any_of(m_chain.cbegin(), m_chain.cend(), isOpen))
        return;
    m_chain.push_back({name, describe(name), nullptr});
    const QStringList inherited = m_chain.back().description.inherits;
    for (const QString &parent : inherited)
        openTheme(parent, depth + 1);
}

QString IconThemeIndex::fallbackTheme() const
{
    for (const QString &name :
         {QStringLiteral("Adwaita"), QStringLiteral("breeze"), QStringLiteral("gnome")}) {
        if (isInstalled(name))
            return name;
    }
    for (const QString &folder : m_folders.themes) {
        const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString &name : names) {
            if (name != hicolor() && isInstalled(name) && !describe(name).folders.empty())
                return name;
        }
    }
    return {};
}

bool IconThemeIndex::isInstalled(const QString &name) const
{
    return isThemeName(name) &&
           std::any_of(m_folders.themes.cbegin(), m_folders.themes.cend(), [&name](const QString &folder) {
               return QFileInfo(folder + QLatin1Char('/') + name + QStringLiteral("/index.theme")).isFile();
           });
}

IconTheme IconThemeIndex::describe(const QString &name) const
{
    for (const QString &folder : m_folders.themes) {
        const QString file = folder + QLatin1Char('/') + name + QStringLiteral("/index.theme");
        if (const std::optional<QByteArray> text = readIconFile(file, largestDescription))
            return parseIconTheme(*text);
    }
    return {};
}

IconListing &IconThemeIndex::listing(Theme &theme) const
{
    if (theme.listing)
        return *theme.listing;
    theme.listing = std::make_unique<IconListing>();
    for (const QString &folder : m_folders.themes) {
        const QByteArray root = QFile::encodeName(folder + QLatin1Char('/') + theme.name);
        if (!theme.listing->watch(root))
            continue;
        for (const IconThemeFolder &kind : theme.description.folders)
            theme.listing->add(root + '/' + kind.path, kind);
    }
    return *theme.listing;
}

} // namespace quillbay::platform
