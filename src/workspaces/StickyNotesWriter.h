#pragma once

#include "workspaces/StickyNote.h"

#include <QHash>

namespace quillbay {

/// Writes a list of notes again and again while one of them is typed in: what has not changed since the last
/// time is not encoded anew, only copied.
class StickyNotesWriter
{
public:
    /// A JSON array of `encodeStickyNote`s.
    QByteArray write(const QList<StickyNote> &notes);

private:
    struct Written
    {
        StickyNote note;
        QByteArray json;
    };
    QHash<QUuid, Written> m_written; ///< The notes of the last list.
};

} // namespace quillbay
