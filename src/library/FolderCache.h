#pragma once

#include "library/AppFolder.h"

#include <QByteArray>
#include <QCache>
#include <QList>
#include <QString>

namespace quillbay {

/// Folder lists decoded before, with the stored bytes that they came from: a change of workspace decodes only
/// what has changed behind it. The bytes decide, not the key alone, so another process may have written them.
class FolderCache
{
public:
    /// What `text` under `key` stands for, in folder order; empty where it cannot be decoded.
    QList<AppFolder> decoded(const QString &key, const QByteArray &text);
    /// `text` is what `folders` became under `key`, and decodes to them.
    void remember(const QString &key, const QByteArray &text, const QList<AppFolder> &folders);

private:
    struct Entry
    {
        QByteArray text;
        QList<AppFolder> folders;
    };
    /// Workspaces whose lists are kept.
    static constexpr int most = 30;

    QCache<QString, Entry> m_entries{most};
};

} // namespace quillbay
