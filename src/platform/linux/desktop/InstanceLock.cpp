#include "platform/linux/desktop/InstanceLock.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

/// Whether `folder` is a real folder that belongs to this user and that nobody else can write to.
bool isPrivate(const QByteArray &folder)
{
    struct stat status = {};
    return ::lstat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

InstanceLock::~InstanceLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

InstanceLock::Outcome InstanceLock::acquire(const QString &folder, const QString &name)
{
    const QByteArray path = QFile::encodeName(folder + QLatin1Char('/') + name);
    const int descriptor =
        ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
    if (descriptor < 0)
        return Outcome::Unavailable;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) {
        ::close(descriptor);
        return Outcome::Unavailable;
    }
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const bool taken = errno == EWOULDBLOCK;
        ::close(descriptor);
        return taken ? Outcome::Taken : Outcome::Unavailable;
    }
    if (const int old = std::exchange(m_descriptor, descriptor); old >= 0)
        ::close(old);
    return Outcome::Held;
}

QString InstanceLock::privateFolder()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (runtime.startsWith('/') && isPrivate(runtime))
        return QFile::decodeName(runtime);
    const QString folder = QDir::tempPath() + QStringLiteral("/quillbay-%1").arg(::geteuid());
    const QByteArray path = QFile::encodeName(folder);
    if (::mkdir(path.constData(), 0700) != 0 && errno != EEXIST)
        return {};
    return isPrivate(path) ? folder : QString();
}

} // namespace quillbay::platform
