#pragma once

#include "foundation/PreferenceStore.h"
#include "workspaces/StickyNote.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <optional>

namespace quillbay {

class WorkspaceManager;

/// The notes of each workspace as they are stored: a JSON array of `encodeStickyNote`s under the workspace's
/// "quillbay_sticky_notes".
///
/// Megabytes of notes take longer than a frame to decode, and as long to encode. So a list that was read or
/// written is known as long as its stored text stays the same, of a changed one only the notes that changed
/// are encoded anew, and `readAhead` does the first reading on another thread.
///
/// Thread: main thread.
class StickyNotesArchive : public QObject
{
    Q_OBJECT

public:
    /// `workspaces` must outlive this object.
    StickyNotesArchive(const PreferenceStore &preferences, const WorkspaceManager &workspaces);

    /// The active workspace's. Nothing where there is none, or one that is no list of notes.
    std::optional<QList<StickyNote>> load();
    void save(const QList<StickyNote> &notes);

    /// Decodes the lists of all workspaces, the active one's first, one after the other on the global pool,
    /// and calls back on the main thread when they are known. What is loaded meanwhile does not wait.
    void readAhead(const std::function<void()> &done);

private:
    struct Written
    {
        StickyNote note;
        QByteArray json;
    };
    /// What a stored text says, and how it is written.
    struct Known
    {
        QByteArray stored;
        QList<StickyNote> notes;
        QHash<QUuid, Written> written; ///< What the last text was put together from.

        static std::optional<Known> decoded(const QByteArray &text);
        /// Puts a text together; the present one where the notes are the present ones.
        void take(const QList<StickyNote> &list);
    };

    void readAhead(QStringList keys, const std::function<void()> &done);
    void forgetOthersThan(const QStringList &keys);
    /// Of all workspaces, the active one's first.
    QStringList keys() const;

    PreferenceStore m_preferences;
    const WorkspaceManager &m_workspaces;
    QHash<QString, Known> m_known; ///< By key.
};

} // namespace quillbay
