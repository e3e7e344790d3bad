#pragma once

#include "workspaces/WorkspaceStorage.h"

#include <QPointer>
#include <QVariantList>

namespace quillbay {

/// A colour that a note can have.
struct NoteColor
{
    Q_GADGET
    Q_PROPERTY(QString hex MEMBER hex CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)

public:
    QString hex;
    QString name;
};

/// The active workspace's notes, looked at one at a time. Each change is stored at once.
///
/// Another workspace brings its notes and leaves the index, which may then be beyond them: there is no text
/// then, and nothing to change. Thread: main thread.
class StickyNotes : public QObject
{
    Q_OBJECT
    /// Set once; must outlive this object.
    Q_PROPERTY(
        quillbay::WorkspaceStorage *storage READ storage WRITE setStorage NOTIFY storageChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY notesChanged)
    Q_PROPERTY(int activeIndex READ activeIndex NOTIFY notesChanged)
    /// Whether the index is that of a note.
    Q_PROPERTY(bool hasActive READ hasActive NOTIFY notesChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString colorHex READ colorHex WRITE setColorHex NOTIFY notesChanged)
    /// Of `NoteColor`.
    Q_PROPERTY(QVariantList colors READ colors CONSTANT)

public:
    using QObject::QObject;

    WorkspaceStorage *storage() const { return m_storage; }
    void setStorage(WorkspaceStorage *storage);

    int count() const;
    int activeIndex() const { return m_activeIndex; }
    bool hasActive() const { return active() != nullptr; }
    /// Empty where the index is that of no note; setting it then does nothing.
    QString text() const;
    void setText(const QString &text);
    QString colorHex() const;
    void setColorHex(const QString &hex);
    static QVariantList colors();

    /// An empty yellow note at the end, which becomes the active one.
    Q_INVOKABLE void add();
    /// The next note takes the place of the active one, at the end the one before it.
    Q_INVOKABLE void removeActive();
    Q_INVOKABLE void showPrevious();
    Q_INVOKABLE void showNext();

Q_SIGNALS:
    void storageChanged();
    void notesChanged();
    /// Sent as well when it is another note's text that happens to be equal.
    void textChanged();

private:
    const StickyNote *active() const;
    void store(const QList<StickyNote> &notes);
    void show(int index);

    QPointer<WorkspaceStorage> m_storage;
    int m_activeIndex = 0;
};

} // namespace quillbay
