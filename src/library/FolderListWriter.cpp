#include "library/FolderListWriter.h"

#include <QByteArrayList>

namespace quillbay {

namespace {

/// Looks at the members as one value: lists that were never changed apart share their memory.
bool isUnchanged(const AppFolder &a, const AppFolder &b)
{
    return a.appURLs.isSharedWith(b.appURLs) && a.name == b.name && a.isPinned == b.isPinned &&
           a.icon == b.icon && a.color == b.color && a.parentFolderID == b.parentFolderID &&
           a.createdAt == b.createdAt && a.sortOrder == b.sortOrder;
}

} // namespace

QByteArray FolderListWriter::write(const QList<AppFolder> &folders, bool *isExact)
{
    QHash<QUuid, Written> written;
    written.reserve(folders.size());
    QByteArrayList texts;
    texts.reserve(folders.size());
    qsizetype size = 2;
    bool isAllExact = true;
    for (const AppFolder &folder : folders) {
        auto known = m_written.constFind(folder.id);
        if (known == m_written.cend() || !isUnchanged(known->folder, folder)) {
            bool isFolderExact = false;
            const QByteArray text = encodeFolder(folder, &isFolderExact);
            known = m_written.insert(folder.id, {folder, text, isFolderExact});
        }
        texts.append(known->text);
        size += known->text.size() + 1;
        isAllExact = isAllExact && known->isExact;
        written.insert(folder.id, *known);
    }
    m_written = std::move(written);
    if (isExact)
        *isExact = isAllExact;

    QByteArray list;
    list.reserve(size);
    list.append('[');
    for (const QByteArray &text : std::as_const(texts)) {
        if (list.size() > 1)
            list.append(',');
        list.append(text);
    }
    return list.append(']');
}

} // namespace quillbay
