#include "platform/linux/documents/XbelRecentDocuments.h"

#include "elevate/Descriptor.h"
#include "platform/ThreadPriority.h"
#include "platform/linux/documents/XbelRecord.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

Q_LOGGING_CATEGORY(log, "quillbay.platform.documents")

/// The name by which the program would register documents of its own.
constexpr QLatin1String ownName("quillbay");

elevate::Descriptor openRecord(const QString &path)
{
    // Should a pipe stand in the record's place, opening it does not wait for its other end.
    return elevate::Descriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// Empty where the file cannot be read or is larger than `largest`.
QByteArray readAll(int descriptor, qint64 size, qint64 largest)
{
    if (size > largest)
        return {};
    // One byte more than it had: a file that grew meanwhile is seen at once.
    QByteArray text(size + 1, Qt::Uninitialized);
    qint64 used = 0;
    while (used < text.size()) {
        const ssize_t count = ::read(descriptor, text.data() + used, size_t(text.size() - used));
        if (count == 0)
            break;
        if (count > 0) {
            used += count;
        } else if (errno != EINTR) {
            qCWarning(log, "reading the record: error %d", errno);
            return {};
        }
    }
    text.truncate(used);
    return text;
}

QString recordOfSession()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    // A relative folder in the environment does not count, which Qt does not look at.
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::home().filePath(QStringLiteral(".local/share"));
    return folder + QLatin1String("/recently-used.xbel");
}

bool isFile(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

XbelRecentDocuments::XbelRecentDocuments(const QString &record, const QString &home, QObject *parent)
    : RecentDocuments(parent)
    , m_record(record)
    , m_home(home)
{
    m_pool.setMaxThreadCount(1);
    m_pool.setExpiryTimeout(1000);
    m_settle.setSingleShot(true);
    m_settle.setInterval(settleDelay);
    connect(&m_settle, &QTimer::timeout, this, &XbelRecentDocuments::compare);
    connect(&m_watch, &FolderWatch::changed, this, [this] {
        if (!m_settle.isActive())
            m_settle.start();
    });
}

XbelRecentDocuments::XbelRecentDocuments(QObject *parent)
    : XbelRecentDocuments(recordOfSession(), QDir::homePath(), parent)
{
}

XbelRecentDocuments::~XbelRecentDocuments()
{
    ++m_query;
    m_pool.clear();
    m_pool.waitForDone();
}

void XbelRecentDocuments::query(double cutoff, int most)
{
    m_watch.watch({QFileInfo(m_record).path()});
    const int number = ++m_query;
    m_pool.start([this, number, cutoff, most] {
        lowerThreadPriority(BackgroundWork::Ahead);
        if (number != m_query)
            return;
        const Answer answer = gather(cutoff, most);
        QMetaObject::invokeMethod(
            this,
            [this, number, answer] {
                if (number != m_query)
                    return;
                m_stamp = answer.stamp;
                Q_EMIT gathered(answer.documents);
            },
            Qt::QueuedConnection);
    });
}

std::optional<XbelRecentDocuments::Stamp> XbelRecentDocuments::stampOf(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return Stamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

XbelRecentDocuments::Answer XbelRecentDocuments::gather(double cutoff, int most) const
{
    const elevate::Descriptor file = openRecord(m_record);
    Answer answer;
    if (file)
        answer.stamp = stampOf(file.get());
    if (!answer.stamp)
        return answer;
    const QByteArray text = readAll(file.get(), answer.stamp->size, largestRecord);
    // Some programs write the home folder as they were told it, others where its links lead.
    QStringList homes{QDir::cleanPath(m_home), QFileInfo(m_home).canonicalFilePath()};
    homes.removeAll(QString());
    for (RecentDocument &document : documentsUsedSince(cutoff, readBookmarks(text), homes, ownName)) {
        if (answer.documents.size() >= most)
            break;
        if (isFile(document.path))
            answer.documents.append(std::move(document));
    }
    return answer;
}

void XbelRecentDocuments::compare()
{
    m_pool.start([this] {
        const elevate::Descriptor file = openRecord(m_record);
        const std::optional<Stamp> stamp = file ? stampOf(file.get()) : std::nullopt;
        QMetaObject::invokeMethod(
            this,
            [this, stamp] {
                if (stamp == m_stamp)
                    return;
                m_stamp = stamp;
                Q_EMIT changed();
            },
            Qt::QueuedConnection);
    });
}

} // namespace quillbay::platform
