#include "uninstaller/ApplicationRows.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

bool isDeletableFile(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0 || path.contains('\0'))
        return false;
    const QByteArray parent = slash == 0 ? QByteArray("/") : path.left(slash);
    struct stat folder = {};
    struct stat status = {};
    if (::lstat(path.constData(), &status) != 0 || ::stat(parent.constData(), &folder) != 0)
        return false;
    const auto isWritable = [](const QByteArray &name) {
        return ::faccessat(AT_FDCWD, name.constData(), W_OK | X_OK, AT_EACCESS) == 0;
    };
    const uid_t user = ::geteuid();
    const bool isKept =
        (folder.st_mode & S_ISVTX) != 0 && user != 0 && user != status.st_uid && user != folder.st_uid;
    return !isKept && isWritable(parent) && (!S_ISDIR(status.st_mode) || isWritable(path));
}

AppResidualFile residualFile(const QByteArray &path, ResidualCategory category, qint64 sizeBytes)
{
    AppResidualFile file;
    file.id = QUuid::createUuid();
    file.path = path;
    file.category = category;
    file.displayName = QFile::decodeName(path.mid(path.lastIndexOf('/') + 1));
    file.sizeBytes = sizeBytes;
    file.isUserDeletable = isDeletableFile(path);
    file.isSelected = file.isUserDeletable;
    file.identity = FileIdentity::of(path);
    return file;
}

AppResidualFile packageRow(const ApplicationOwner &owner)
{
    AppResidualFile file;
    file.id = QUuid::createUuid();
    file.packageReference = owner.reference;
    file.category = ResidualCategory::appBundle;
    file.displayName = owner.displayName;
    file.sizeBytes = owner.sizeBytes;
    file.isUserDeletable = owner.isRemovable;
    file.isSelected = owner.isRemovable;
    return file;
}

} // namespace quillbay
