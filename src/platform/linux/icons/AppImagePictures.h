#pragma once

#include <QByteArray>
#include <QCache>
#include <QMutex>
#include <QString>

#include <optional>

namespace quillbay::platform {

/// Where the ELF program whose first bytes are `header` (64 or more) ends: behind its table of section
/// headers. Nothing for what is no ELF file. An AppImage of type 2 has its file system there.
std::optional<qint64> elfEnd(const QByteArray &header);

/// The icon files inside AppImages, read by `unsquashfs` where it is installed.
///
/// Thread: any, several at a time; waits for the tool, five seconds at most.
class AppImagePictures
{
public:
    /// The content of the `.DirIcon` of the image at `path`, links followed; empty where there is none.
    /// The last answers are kept until the image changes.
    QByteArray read(const QString &path);

private:
    struct Answer
    {
        qint64 size;
        qint64 modified;
        QByteArray content;
    };

    QMutex m_mutex;
    QCache<QString, Answer> m_answers{8 * 1024 * 1024};
};

} // namespace quillbay::platform
