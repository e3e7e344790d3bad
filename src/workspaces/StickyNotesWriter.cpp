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
    qsizetype size = 2;
    for (const StickyNote &note : notes) {
        Written last = m_written.value(note.id);
        if (last.json.isEmpty() || !isSame(last.note, note))
            last.json = encodeStickyNote(note);
        parts.append(last.json);
        size += last.json.size() + 1;
        written.insert(note.id, {note, last.json});
    }
    m_written = std::move(written);
    // Made in one piece: the list may be megabytes, and each copy of it takes as long as half its writing.
    QByteArray json;
    json.reserve(size);
    json.append('[');
    for (const QByteArray &part : parts)
        json.append(json.size() > 1 ? "," : "").append(part);
    return json.append(']');
}

} // namespace quillbay
