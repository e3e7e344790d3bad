#include "platform/linux/icons/IconListing.h"

#include <QFile>
#include <QHashFunctions>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <tuple>

#include <dirent.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

constexpr size_t mostFiles = 1'000'000;
constexpr std::array<std::string_view, 3> extensions = {".png", ".svg", ".xpm"};
constexpr size_t svg = 1;

size_t hashOf(std::string_view name)
{
    return qHashBits(name.data(), name.size(), 0);
}

qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

} // namespace

std::optional<IconListing::Identity> IconListing::stamp(const QByteArray &path)
{
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        m_stamps.push_back({path, 0, 0});
        return std::nullopt;
    }
    // A file that comes within the same clock tick leaves the time as it is: a folder that has just changed
    // is listed once more when next looked at.
    constexpr qint64 tick = 50'000'000;
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const qint64 modified = nanoseconds(status.st_mtim);
    const bool justChanged = std::abs(nanoseconds(now) - modified) < tick;
    m_stamps.push_back({path, status.st_ino, justChanged ? -1 : modified});
    return Identity{status.st_dev, status.st_ino};
}

bool IconListing::watch(const QByteArray &path)
{
    return stamp(path).has_value();
}

void IconListing::add(const QByteArray &path, const IconThemeFolder &kind)
{
    const std::optional<Identity> identity = stamp(path);
    if (!identity || !m_listed.insert(*identity).second)
        return;
    DIR *folder = ::opendir(path.constData());
    if (!folder)
        return;
    const auto close = qScopeGuard([folder] { ::closedir(folder); });

    const size_t before = m_files.size();
    while (const dirent *entry = ::readdir(folder)) {
        if (entry->d_type != DT_REG && entry->d_type != DT_LNK && entry->d_type != DT_UNKNOWN)
            continue;
        const std::string_view name(entry->d_name);
        for (size_t i = 0; i < extensions.size(); ++i) {
            if (name.size() > extensions[i].size() && name.ends_with(extensions[i]) &&
                m_files.size() < mostFiles)
                m_files.push_back({hashOf(name.substr(0, name.size() - extensions[i].size())),
                                   quint32(m_folders.size()), quint8(i)});
        }
    }
    if (m_files.size() == before)
        return;
    m_folders.push_back({path, kind});
    m_sorted = false;
}

QStringList IconListing::find(const QByteArray &name, int edge)
{
    const auto byHash = [](const File &a, const File &b) { return a.hash < b.hash; };
    if (!m_sorted) {
        std::sort(m_files.begin(), m_files.end(), byHash);
        m_files.shrink_to_fit();
        m_sorted = true;
    }
    const File wanted = {hashOf({name.constData(), size_t(name.size())}), 0, 0};
    const auto [first, last] = std::equal_range(m_files.cbegin(), m_files.cend(), wanted, byHash);

    using Match = std::tuple<IconRank, quint32, quint8>;
    std::vector<Match> matches;
    for (auto file = first; file != last; ++file)
        matches.emplace_back(rankIcon(m_folders[file->folder].kind, file->extension == svg, edge),
                             file->folder, file->extension);
    std::sort(matches.begin(), matches.end());

    QStringList paths;
    for (const auto &[rank, folder, extension] : matches) {
        const std::string_view suffix = extensions[extension];
        paths << QFile::decodeName(m_folders[folder].path + '/' + name +
                                   QByteArray(suffix.data(), qsizetype(suffix.size())));
    }
    return paths;
}

bool IconListing::isStale() const
{
    return std::any_of(m_stamps.cbegin(), m_stamps.cend(), [](const Stamp &stamp) {
        struct stat status = {};
        if (::stat(stamp.path.constData(), &status) != 0 || !S_ISDIR(status.st_mode))
            return stamp.inode != 0;
        return status.st_ino != stamp.inode || nanoseconds(status.st_mtim) != stamp.modified;
    });
}

} // namespace quillbay::platform
