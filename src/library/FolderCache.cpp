#include "library/FolderCache.h"

#include "library/FolderOrder.h"

#include <memory>

namespace quillbay {

QList<AppFolder> FolderCache::decoded(const QString &key, const QByteArray &text)
{
    const Entry *known = m_entries.object(key);
    if (!known || known->text != text) {
        const Decoded<QList<AppFolder>> decoded = decodeFolders(text);
        const QList<AppFolder> *folders = decodedValue(decoded);
        remember(key, text, folders ? *folders : QList<AppFolder>());
        known = m_entries.object(key);
    }
    return known->folders;
}

void FolderCache::remember(const QString &key, const QByteArray &text, const QList<AppFolder> &folders)
{
    auto entry = std::make_unique<Entry>(Entry{text, folders});
    sortFolders(entry->folders);
    m_entries.insert(key, entry.release());
}

} // namespace quillbay
