#include "platform/linux/icons/IconFile.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

std::optional<QByteArray> readIconFile(const QString &path, qint64 largest, qint64 offset, qint64 count)
{
    // Without O_NONBLOCK, opening a FIFO waits for a writer.
    const int file =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return std::nullopt;
    const auto close = qScopeGuard([file] { ::close(file); });

    struct stat status = {};
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > largest)
        return std::nullopt;
    const qint64 size = std::clamp<qint64>(status.st_size - offset, 0, count);
    QByteArray content(size, Qt::Uninitialized);
    qint64 done = 0;
    while (done < size) {
        const ssize_t got = ::pread(file, content.data() + done, size_t(size - done), offset + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        done += got;
    }
    content.truncate(done);
    return content;
}

} // namespace quillbay::platform
