#include "platform/linux/applications/BoundedFile.h"

#include "elevate/Descriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

BoundedFile::BoundedFile()
    : m_buffer(new char[MaximumSize + 1])
{
}

std::optional<std::string_view> BoundedFile::read(int folder, const char *path, Kind kind)
{
    // Asked before opening: opening some devices does something already.
    struct stat status = {};
    if (kind == Kind::Unknown && (::fstatat(folder, path, &status, 0) != 0 || !S_ISREG(status.st_mode)))
        return std::nullopt;
    // Should a pipe have taken the file's place since, opening and reading do not wait for its other end.
    const elevate::Descriptor file(::openat(folder, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file)
        return std::nullopt;
    size_t size = 0;
    while (size <= MaximumSize) {
        const ssize_t count = ::read(file.get(), m_buffer.get() + size, MaximumSize + 1 - size);
        if (count > 0)
            size += size_t(count);
        // Only a file's end cuts a read short, but for some network file systems. A text that ends with a
        // line feed is complete; that saves asking once more, a tenth of all that reading it costs.
        if (count == 0 || (count > 0 && size <= MaximumSize && m_buffer[size - 1] == '\n'))
            return std::string_view(m_buffer.get(), size);
        if (count < 0 && errno != EINTR)
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace quillbay::platform
