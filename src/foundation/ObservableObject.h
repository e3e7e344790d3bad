#pragma once

#include <QObject>

#include <utility>

namespace quillbay {

/// An object that announces a change twice: `objectWillChange` before the value changes, and the property's
/// own notify signal after it.
///
/// Both are needed. A listener of `objectWillChange` runs while every getter still answers with the old
/// value: whoever recomputes from it sees the state before the change, and an operation whose result must
/// show at once therefore ends with one more `objectWillChange`. QML bindings hang on the notify signals and
/// see the state after the change.
///
/// Thread: the thread of the object, which for all long-lived ones is the main thread.
class ObservableObject : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// Sent before a published value changes, and by operations that want their listeners to look once more.
    void objectWillChange();

protected:
    /// Publishes one assignment: announce, assign, notify. Sent for equal values too: equality of the
    /// library's records looks at identity alone, so it cannot tell that nothing changed.
    template <typename Owner, typename Field>
    void publish(Field &field, Field value, void (Owner::*notify)())
    {
        Q_EMIT objectWillChange();
        field = std::move(value);
        Q_EMIT(static_cast<Owner *>(this)->*notify)();
    }
};

} // namespace quillbay
