#include "platform/linux/icons/AppImagePictures.h"

#include "platform/linux/icons/IconFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QMutexLocker>
#include <QProcess>
#include <QStandardPaths>
#include <QtEndian>

#include <limits>

#include <elf.h>

namespace quillbay::platform {

namespace {

constexpr std::chrono::seconds patience(5);
constexpr qint64 largestPicture = 4 * 1024 * 1024;
constexpr int mostLinks = 8;

template <typename Number>
Number fromElf(Number value, bool bigEndian)
{
    return bigEndian ? qFromBigEndian(value) : qFromLittleEndian(value);
}

template <typename Header>
std::optional<qint64> endOfSections(const QByteArray &bytes, bool bigEndian)
{
    Header header;
    if (bytes.size() < qsizetype(sizeof header))
        return std::nullopt;
    memcpy(&header, bytes.constData(), sizeof header);
    const quint64 start = fromElf(header.e_shoff, bigEndian);
    const quint64 length =
        quint64(fromElf(header.e_shentsize, bigEndian)) * fromElf(header.e_shnum, bigEndian);
    if (start > quint64(std::numeric_limits<qint64>::max()) - length)
        return std::nullopt;
    return qint64(start + length);
}

std::optional<qint64> fileSystemOffset(const QString &path)
{
    constexpr qint64 any = std::numeric_limits<qint64>::max();
    const std::optional<QByteArray> header = readIconFile(path, any, 0, sizeof(Elf64_Ehdr));
    const std::optional<qint64> offset = header ? elfEnd(*header) : std::nullopt;
    if (!offset || readIconFile(path, any, *offset, 4) != QByteArray("hsqs"))
        return std::nullopt;
    return offset;
}

/// What the tool prints; empty when it fails, prints too much or takes too long.
QByteArray run(const QString &tool, const QStringList &arguments, const QDeadlineTimer &deadline)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(tool, arguments);
    QByteArray output;
    while (process.waitForReadyRead(int(deadline.remainingTime()))) {
        output += process.readAllStandardOutput();
        if (output.size() > largestPicture)
            break;
    }
    output += process.readAllStandardOutput();
    // Waiting for a process that has already been seen to end answers "no".
    const bool ended =
        process.state() == QProcess::NotRunning ||
        (output.size() <= largestPicture && process.waitForFinished(int(deadline.remainingTime())));
    if (!ended) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    if (output.size() > largestPicture)
        return {};
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 ? output : QByteArray();
}

/// Where the link `name` leads, in a listing of it.
QString linkTarget(const QByteArray &listing, const QString &name)
{
    const QByteArray arrow = " squashfs-root/" + name.toUtf8() + " -> ";
    for (const QByteArray &line : listing.split('\n')) {
        const qsizetype at = line.indexOf(arrow);
        if (line.startsWith('l') && at >= 0)
            return QString::fromUtf8(line.sliced(at + arrow.size()));
    }
    return {};
}

QByteArray extract(const QString &image, qint64 offset)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("unsquashfs"));
    if (tool.isEmpty())
        return {};
    // One thread and small queues: by default the tool reserves half a gigabyte.
    const QStringList common = {QStringLiteral("-offset"),       QString::number(offset),
                                QStringLiteral("-no-wildcards"), QStringLiteral("-no-progress"),
                                QStringLiteral("-processors"),   QStringLiteral("1"),
                                QStringLiteral("-da"),           QStringLiteral("8"),
                                QStringLiteral("-fr"),           QStringLiteral("8")};
    const QDeadlineTimer deadline(patience);
    // Links are followed here: the tool's own following fails in the releases that are in use.
    QString name = QStringLiteral(".DirIcon");
    for (int i = 0; i < mostLinks && !deadline.hasExpired(); ++i) {
        const QByteArray content =
            run(tool, common + QStringList{QStringLiteral("-cat"), image, name}, deadline);
        if (!content.isEmpty())
            return content;
        const QByteArray listing =
            run(tool, common + QStringList{QStringLiteral("-ll"), image, name}, deadline);
        const QString target = linkTarget(listing, name);
        if (target.isEmpty())
            return {};
        name = QDir::cleanPath(QLatin1Char('/') + QFileInfo(name).path() + QLatin1Char('/') + target).mid(1);
        if (target.startsWith(QLatin1Char('/')))
            name = QDir::cleanPath(target).mid(1);
        if (name.isEmpty() || name.startsWith(QLatin1Char('-')) || name.startsWith(QLatin1String("../")))
            return {};
    }
    return {};
}

} // namespace

std::optional<qint64> elfEnd(const QByteArray &header)
{
    if (header.size() < EI_NIDENT || memcmp(header.constData(), ELFMAG, SELFMAG) != 0)
        return std::nullopt;
    const bool bigEndian = header[EI_DATA] == ELFDATA2MSB;
    if (header[EI_CLASS] == ELFCLASS32)
        return endOfSections<Elf32_Ehdr>(header, bigEndian);
    if (header[EI_CLASS] == ELFCLASS64)
        return endOfSections<Elf64_Ehdr>(header, bigEndian);
    return std::nullopt;
}

QByteArray AppImagePictures::read(const QString &path)
{
    const QFileInfo file(path);
    const qint64 modified = file.lastModified().toMSecsSinceEpoch();
    {
        const QMutexLocker lock(&m_mutex);
        const Answer *known = m_answers.object(path);
        if (known && known->size == file.size() && known->modified == modified)
            return known->content;
    }
    const std::optional<qint64> offset = fileSystemOffset(path);
    const QByteArray content = offset ? extract(path, *offset) : QByteArray();
    const QMutexLocker lock(&m_mutex);
    m_answers.insert(path, new Answer{file.size(), modified, content}, path.size() * 2 + content.size());
    return content;
}

} // namespace quillbay::platform
