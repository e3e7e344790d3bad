#include "tools/StickyNotes.h"

#include <algorithm>

namespace quillbay {

namespace {

const QString yellow = QStringLiteral("#FFD60A");

} // namespace

void StickyNotes::setStorage(WorkspaceStorage *storage)
{
    if (!storage || m_storage)
        return;
    m_storage = storage;
    connect(storage, &WorkspaceStorage::stickyNotesChanged, this, &StickyNotes::notesChanged);
    connect(storage, &WorkspaceStorage::stickyNotesChanged, this, &StickyNotes::textChanged);
    Q_EMIT storageChanged();
    Q_EMIT notesChanged();
    Q_EMIT textChanged();
}

int StickyNotes::count() const
{
    return m_storage ? int(m_storage->stickyNotes().size()) : 0;
}

const StickyNote *StickyNotes::active() const
{
    return m_activeIndex < count() ? &m_storage->stickyNotes()[m_activeIndex] : nullptr;
}

QString StickyNotes::text() const
{
    const StickyNote *note = active();
    return note ? note->text : QString();
}

void StickyNotes::setText(const QString &text)
{
    if (!active() || active()->text == text)
        return;
    QList<StickyNote> notes = m_storage->stickyNotes();
    notes[m_activeIndex].text = text;
    store(notes);
}

QString StickyNotes::colorHex() const
{
    const StickyNote *note = active();
    return note ? note->colorHex : QString();
}

void StickyNotes::setColorHex(const QString &hex)
{
    if (!active())
        return;
    QList<StickyNote> notes = m_storage->stickyNotes();
    notes[m_activeIndex].colorHex = hex;
    store(notes);
}

QVariantList StickyNotes::colors()
{
    QVariantList colors;
    for (const NoteColor &color :
         {NoteColor{yellow, tr("Yellow")}, NoteColor{QStringLiteral("#64D2FF"), tr("Blue")},
          NoteColor{QStringLiteral("#30D158"), tr("Green")}, NoteColor{QStringLiteral("#FF6482"), tr("Pink")},
          NoteColor{QStringLiteral("#BF5AF2"), tr("Purple")}})
        colors.append(QVariant::fromValue(color));
    return colors;
}

void StickyNotes::add()
{
    if (!m_storage)
        return;
    store(m_storage->stickyNotes() + QList<StickyNote>{{QUuid::createUuid(), QString(), yellow}});
    show(count() - 1);
}

void StickyNotes::removeActive()
{
    if (!active())
        return;
    QList<StickyNote> notes = m_storage->stickyNotes();
    notes.removeAt(m_activeIndex);
    store(notes);
    if (m_activeIndex >= count())
        show(std::max(0, count() - 1));
}

void StickyNotes::showPrevious()
{
    show(std::max(0, m_activeIndex - 1));
}

void StickyNotes::showNext()
{
    show(std::max(0, std::min(m_activeIndex + 1, count() - 1)));
}

void StickyNotes::store(const QList<StickyNote> &notes)
{
    m_storage->setStickyNotes(notes);
    m_storage->saveNotes();
}

void StickyNotes::show(int index)
{
    if (index == m_activeIndex)
        return;
    m_activeIndex = index;
    Q_EMIT notesChanged();
    Q_EMIT textChanged();
}

} // namespace quillbay
