#include "foundation/DatabaseFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

constexpr auto OwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
constexpr auto OthersToo = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                           QFile::WriteOther | QFile::ExeOther;

// The main file first: should the rename of a later one never happen, the journal is left orphaned, which the
// next start notices.
constexpr std::array Suffixes{QLatin1StringView(""), QLatin1StringView("-wal"), QLatin1StringView("-journal"),
                              QLatin1StringView("-shm")};

bool makeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    if (parent == path || !makeFolder(parent))
        return false;
    return QDir().mkdir(path, OwnerOnly) || QFileInfo(path).isDir();
}

QString freeName(const QString &path)
{
    const QString stem = path + QStringLiteral(".damaged-") +
                         QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    for (int number = 1;; ++number) {
        const QString name = number == 1 ? stem : stem + QLatin1Char('.') + QString::number(number);
        if (std::none_of(Suffixes.begin(), Suffixes.end(),
                         [&](QLatin1StringView suffix) { return QFile::exists(name + suffix); }))
            return name;
    }
}

} // namespace

DatabaseFiles::DatabaseFiles(const QString &path)
    : m_path(QFileInfo(path).canonicalFilePath())
{
    if (m_path.isEmpty())
        m_path = QFileInfo(path).absoluteFilePath();
}

std::optional<QString> DatabaseFiles::makePrivate() const
{
    const QString folder = QFileInfo(m_path).path();
    if (!makeFolder(folder))
        return QStringLiteral("cannot make the folder %1").arg(folder);
    if (QFile file(m_path);
        !file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner) &&
        !QFile::exists(m_path))
        return QStringLiteral("cannot make the file: %1").arg(file.errorString());
    if (!QFileInfo(m_path).isFile())
        return QStringLiteral("not a regular file");
    for (const QLatin1StringView suffix : Suffixes) {
        const QString name = m_path + suffix;
        const QFile::Permissions permissions = QFile::permissions(name);
        const bool isOpenToOthers = (permissions & OthersToo) != 0;
        if (isOpenToOthers && !QFile::setPermissions(name, permissions & OwnerOnly) && QFile::exists(name))
            return QStringLiteral("cannot take the permissions of others from %1").arg(name);
    }
    return {};
}

bool DatabaseFiles::isJournalOrphaned() const
{
    // In this order: SQLite gives the main file its first page before it makes the journal.
    return QFileInfo(m_path + QStringLiteral("-wal")).size() > 0 && QFileInfo(m_path).size() == 0;
}

std::optional<QString> DatabaseFiles::setAside() const
{
    const QString name = freeName(m_path);
    for (const QLatin1StringView suffix : Suffixes) {
        if (QFile::exists(m_path + suffix) && !QFile::rename(m_path + suffix, name + suffix))
            return {};
    }
    return name;
}

} // namespace quillbay
