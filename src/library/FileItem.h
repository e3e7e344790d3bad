#pragma once

#include <QImage>
#include <QString>
#include <QUrl>
#include <QUuid>

namespace quillbay {

/// What kind of thing a `FileItem` is. One case now; code that switches on it must not assume more.
enum class FileItemKind { file };

/// A recent document. Never stored; `id` is made afresh for each query result and is not stable between them.
struct FileItem
{
    QUuid id = QUuid::createUuid();
    QString name;
    QImage icon; ///< Of its kind; null where the desktop has none.
    QUrl url;
    FileItemKind kind = FileItemKind::file;

    friend bool operator==(const FileItem &a, const FileItem &b) { return a.id == b.id; }
};

} // namespace quillbay
