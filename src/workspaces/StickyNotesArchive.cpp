#include "workspaces/StickyNotesArchive.h"

#include "workspaces/WorkspaceManager.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <algorithm>

namespace quillbay {

namespace {

const QString notesKey = QStringLiteral("quillbay_sticky_notes");

/// Texts that share their characters, as those of untouched notes do, are not compared.
bool isSame(const QString &a, const QString &b)
{
    return (a.constData() == b.constData() && a.size() == b.size()) || a == b;
}

bool isSame(const StickyNote &a, const StickyNote &b)
{
    return a.id == b.id && isSame(a.text, b.text) && isSame(a.colorHex, b.colorHex);
}

bool isSame(const QList<StickyNote> &a, const QList<StickyNote> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const StickyNote &x, const StickyNote &y) { return isSame(x, y); });
}

} // namespace

std::optional<StickyNotesArchive::Known> StickyNotesArchive::Known::decoded(const QByteArray &text)
{
    const auto result = decodeStickyNotes(text);
    const QList<StickyNote> *list = decodedValue(result);
    if (!list)
        return std::nullopt;
    Known known;
    known.take(*list);
    return known;
}

void StickyNotesArchive::Known::take(const QList<StickyNote> &list)
{
    if (!stored.isEmpty() && isSame(notes, list))
        return;
    QHash<QUuid, Written> parts;
    parts.reserve(list.size());
    QList<QByteArray> texts;
    texts.reserve(list.size());
    qsizetype size = 2;
    for (const StickyNote &note : list) {
        Written part = written.value(note.id);
        if (part.json.isEmpty() || !isSame(part.note, note))
            part = {note, encodeStickyNote(note)};
        texts.append(part.json);
        size += part.json.size() + 1;
        parts.insert(note.id, part);
    }
    // Made in one piece: the list may be megabytes, and each copy of it takes as long as half its writing.
    QByteArray json;
    json.reserve(size);
    json.append('[');
    for (const QByteArray &text : texts)
        json.append(json.size() > 1 ? "," : "").append(text);
    stored = json.append(']');
    notes = list;
    written = std::move(parts);
}

StickyNotesArchive::StickyNotesArchive(const PreferenceStore &preferences, const WorkspaceManager &workspaces)
    : m_preferences(preferences)
    , m_workspaces(workspaces)
{
}

std::optional<QList<StickyNote>> StickyNotesArchive::load()
{
    const QString key = m_workspaces.key(notesKey);
    forgetOthersThan(keys());
    const std::optional<QByteArray> stored = m_preferences.data(key);
    if (!stored)
        return std::nullopt;
    auto known = m_known.find(key);
    if (known == m_known.end() || known->stored != *stored) {
        const std::optional<Known> decoded = Known::decoded(*stored);
        if (!decoded)
            return std::nullopt;
        known = m_known.insert(key, *decoded);
    } else {
        known->stored = *stored; // one copy in memory is enough
    }
    return known->notes;
}

void StickyNotesArchive::save(const QList<StickyNote> &notes)
{
    const QString key = m_workspaces.key(notesKey);
    Known &known = m_known[key];
    known.take(notes);
    m_preferences.setData(key, known.stored);
}

void StickyNotesArchive::readAhead(const std::function<void()> &done)
{
    readAhead(keys(), done);
}

void StickyNotesArchive::readAhead(QStringList keys, const std::function<void()> &done)
{
    std::optional<QByteArray> stored;
    QString key;
    while (!stored && !keys.isEmpty()) {
        key = keys.takeFirst();
        if (!m_known.contains(key))
            stored = m_preferences.data(key);
    }
    if (!stored) {
        done();
        return;
    }
    QThreadPool::globalInstance()->start([self = QPointer(this), text = *stored, key, keys, done] {
        const std::optional<Known> known = Known::decoded(text);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, known, key, keys, done] {
                if (!self)
                    return;
                if (known && !self->m_known.contains(key))
                    self->m_known.insert(key, *known);
                self->readAhead(keys, done);
            },
            Qt::QueuedConnection);
    });
}

void StickyNotesArchive::forgetOthersThan(const QStringList &keys)
{
    m_known.removeIf([&keys](const auto &entry) { return !keys.contains(entry.key()); });
}

QStringList StickyNotesArchive::keys() const
{
    QStringList keys{m_workspaces.key(notesKey)};
    for (const Workspace &workspace : m_workspaces.workspaces()) {
        const QString key = WorkspaceManager::key(notesKey, workspace.id);
        if (key != keys.first())
            keys.append(key);
    }
    return keys;
}

} // namespace quillbay
