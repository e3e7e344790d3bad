#include "workspaces/StickyNotesWriter.h"

namespace quillbay {

namespace {

/// Texts that share their characters, as those of untouched notes do, are not compared.
bool isSame(const QString &a, const QString &b)
{
    return (a.constData() == b.constData() && a.size() == b.size()) || a == b;
}

bool isSame(const StickyNote &a, const StickyNote &b)
{
    return a.id == b.id && isSame(a.text, b.text) && isSame(a.colorHex, b.colorHex);
}

} // namespace

QByteArray StickyNotesWriter::write(const QList<StickyNote> &notes)
{
    QHash<QUuid, Written> written;
    written.reserve(notes.size());
    QList<QByteArray> parts;
    parts.reserve(notes.size());
    for (const StickyNote &note : notes) {
        Written last = m_written.value(note.id);
        if (last.json.isEmpty() || !isSame(last.note, note))
            last.json = encodeStickyNote(note);
        parts.append(last.json);
        written.insert(note.id, {note, last.json});
    }
    m_written = std::move(written);
    return '[' + parts.join(',') + ']';
}

} // namespace quillbay
