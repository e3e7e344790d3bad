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
constexpr auto Everyone = OwnerOnly | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

constexpr QLatin1StringView Wal("-wal");
constexpr QLatin1StringView RollbackJournal("-journal");
// The main file first: should the rename of a later one never happen, the journal is left alone, which the
// next start notices.
constexpr std::array Suffixes{QLatin1StringView(""), Wal, RollbackJournal, QLatin1StringView("-shm")};

constexpr qint64 SmallestPage = 512;

qint64 sizeOf(const QString &path)
{
    return QFileInfo(path).size();
}

bool makeFolders(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    if (parent == path || !makeFolders(parent))
        return false;
    return QDir().mkdir(path, OwnerOnly) || QFileInfo(path).isDir();
}

bool takeFromOthers(const QString &path)
{
    const QFile::Permissions now = QFile::permissions(path) & Everyone;
    return (now & OwnerOnly) == now || QFile::setPermissions(path, now & OwnerOnly);
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
        m_path = QFileInfo(path).isSymLink() ? QFileInfo(path).symLinkTarget()
                                             : QFileInfo(path).absoluteFilePath();
}

bool DatabaseFiles::isMissing() const
{
    return sizeOf(m_path) == 0;
}

bool DatabaseFiles::isNoFile() const
{
    return QFileInfo::exists(m_path) && !QFileInfo(m_path).isFile();
}

bool DatabaseFiles::isRemnant() const
{
    // The journals first: a database has a page before it has a journal.
    const bool hasJournal = sizeOf(m_path + Wal) > 0 || sizeOf(m_path + RollbackJournal) > 0;
    const qint64 size = sizeOf(m_path);
    return size < SmallestPage && (size > 0 || hasJournal);
}

bool DatabaseFiles::isLastPageCutShort(qint64 pageSize) const
{
    return sizeOf(m_path) % pageSize != 0 && sizeOf(m_path + Wal) == 0 &&
           sizeOf(m_path + RollbackJournal) == 0;
}

std::optional<QString> DatabaseFiles::makeFolder() const
{
    const QString folder = QFileInfo(m_path).path();
    return makeFolders(folder) ? std::nullopt
                               : std::optional(QStringLiteral("cannot make the folder %1").arg(folder));
}

std::optional<QString> DatabaseFiles::closeToOthers() const
{
    const QFile::Permissions owners = QFile::permissions(m_path) & OwnerOnly;
    for (const QLatin1StringView suffix : Suffixes) {
        const QString name = m_path + suffix;
        if (QFile::exists(name) && (QFile::permissions(name) & Everyone) != owners &&
            !QFile::setPermissions(name, owners) && QFile::exists(name))
            return QStringLiteral("cannot take %1 from others").arg(name);
    }
    return {};
}

std::optional<QString> DatabaseFiles::makeEmpty() const
{
    for (const QLatin1StringView suffix : Suffixes) {
        QFile old(m_path + suffix);
        if (!old.remove() && old.exists())
            return QStringLiteral("cannot remove %1: %2").arg(old.fileName(), old.errorString());
    }
    QFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        return {};
    return QStringLiteral("cannot make %1: %2").arg(m_path, file.errorString());
}

std::optional<QString> DatabaseFiles::takePlaceOf(const DatabaseFiles &target) const
{
    QFile empty(target.path());
    if (target.isMissing() && empty.exists() && !empty.remove())
        return QStringLiteral("cannot replace the empty file: %1").arg(empty.errorString());
    QFile file(m_path);
    if (file.rename(target.path()))
        return {};
    return QStringLiteral("cannot be made: %1").arg(file.errorString());
}

std::optional<QString> DatabaseFiles::setAside() const
{
    const QString name = freeName(m_path);
    for (const QLatin1StringView suffix : Suffixes) {
        const QString file = m_path + suffix;
        if (QFile::exists(file) && (!takeFromOthers(file) || !QFile::rename(file, name + suffix)))
            return {};
    }
    return name;
}

} // namespace quillbay
