#include "platform/linux/uninstalling/removal/ElevationHelper.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

constexpr char installedHelper[] = QUILLBAY_HELPER;

bool isPlainText(const QByteArray &line)
{
    const QString text = QString::fromUtf8(line);
    return text.toUtf8() == line && !text.contains(QChar::ReplacementCharacter) &&
           std::all_of(text.begin(), text.end(),
                       [](QChar each) { return each.isPrint() || each.isSurrogate(); });
}

} // namespace

ElevationHelper ElevationHelper::ofProgram()
{
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/quillbay-elevate");
    if (QFileInfo::exists(beside))
        return {beside, false};
    return {QString::fromLocal8Bit(installedHelper), true};
}

bool ElevationHelper::isTrustworthy() const
{
    struct stat status = {};
    if (path.isEmpty() || lstat(QFile::encodeName(path).constData(), &status) != 0 ||
        !S_ISREG(status.st_mode) || !(status.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)))
        return false;
    return !installed || (status.st_uid == 0 && !(status.st_mode & (S_IWGRP | S_IWOTH)));
}

QStringList helperArguments(const ElevatedCommand &command)
{
    const FileStamp &file = command.file;
    const QString mark = QStringLiteral("file=%1:%2:%3").arg(file.device).arg(file.inode).arg(file.kind);
    if (isPlainText(command.line))
        return {mark, QString::fromUtf8(command.line)};
    return {mark + QStringLiteral(",escaped"), QString::fromLatin1(command.line.toPercentEncoding(" /'\\"))};
}

} // namespace quillbay::platform
