#include "uninstaller/FileIdentity.h"

#include <sys/stat.h>

namespace quillbay {

std::optional<FileIdentity> FileIdentity::of(const QByteArray &path)
{
    struct stat status = {};
    if (path.contains('\0') || lstat(path.constData(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino, quint32(status.st_mode & S_IFMT)};
}

} // namespace quillbay
