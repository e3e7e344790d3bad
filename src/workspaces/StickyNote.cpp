#include "workspaces/StickyNote.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"

namespace quillbay {

using json::Json;

QByteArray encodeStickyNote(const StickyNote &note)
{
    Json object;
    object["id"] = json::text(uuidString(note.id));
    object["text"] = json::text(note.text);
    object["colorHex"] = json::text(note.colorHex);
    return json::dump(object);
}

Decoded<QList<StickyNote>> decodeStickyNotes(const QByteArray &text)
{
    return json::decode<QList<StickyNote>>(text, [](const Json &value) {
        if (!value.is_array())
            throw json::Error{DecodeError::Kind::TypeMismatch, QStringLiteral("Expected an array.")};
        QList<StickyNote> notes;
        notes.reserve(qsizetype(value.size()));
        for (const Json &element : value) {
            const json::Object object(element);
            notes.append({object.uuid("id"), object.string("text"), object.string("colorHex")});
        }
        return notes;
    });
}

} // namespace quillbay
