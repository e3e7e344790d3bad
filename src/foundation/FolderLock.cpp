#include "foundation/FolderLock.h"

#include <QFile>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace quillbay {

FolderLock::FolderLock(const QString &folder, std::chrono::milliseconds patience)
    : m_descriptor(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    using Clock = std::chrono::steady_clock;
    constexpr auto Pause = std::chrono::milliseconds(2);
    const auto end = Clock::now() + patience;
    while (m_descriptor >= 0 && !m_isHeld) {
        m_isHeld = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
        if (m_isHeld || (errno != EWOULDBLOCK && errno != EINTR) || Clock::now() >= end)
            break;
        std::this_thread::sleep_for(Pause);
    }
}

FolderLock::~FolderLock()
{
    // The only descriptor of this lock: closing it lets go. Nothing was written, so nothing can fail to be.
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace quillbay
