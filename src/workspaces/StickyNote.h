#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QUuid>

namespace quillbay {

/// A coloured note. Equality and hash look at every field.
struct StickyNote
{
    QUuid id;
    QString text;     ///< Any number of lines.
    QString colorHex; ///< Stored colour text such as "#FFD60A".

    friend bool operator==(const StickyNote &, const StickyNote &) = default;
    friend size_t qHash(const StickyNote &note, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, note.id, note.text, note.colorHex);
    }
};

/// JSON of one note: an object with the keys "id", "text", "colorHex", in that order.
QByteArray encodeStickyNote(const StickyNote &note);

/// A JSON array of such objects. All three keys are required, unknown ones are ignored; one bad record fails
/// the whole.
Decoded<QList<StickyNote>> decodeStickyNotes(const QByteArray &json);

} // namespace quillbay
