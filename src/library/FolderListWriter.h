#pragma once

#include "library/AppFolder.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QUuid>

namespace quillbay {

/// Writes folder lists as `encodeFolders` does, of which each differs little from the one before: the text of
/// a folder that has not changed is taken over.
class FolderListWriter
{
public:
    QByteArray write(const QList<AppFolder> &folders, bool *isExact = nullptr);

private:
    struct Written
    {
        AppFolder folder;
        QByteArray text;
        bool isExact;
    };
    QHash<QUuid, Written> m_written; ///< Of the last list.
};

} // namespace quillbay
