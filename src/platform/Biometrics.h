#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace quillbay::platform {

/// Proof that the person at the machine is its user, by a finger. It proves that to this process alone: it
/// can keep a screen closed, and is no key to anything encrypted.
///
/// Every answer comes once, on the main thread and never before the call returns; none comes after the end of
/// this object. Thread: main thread.
class Biometrics : public QObject
{
    Q_OBJECT

public:
    /// `error` is a sentence for the user. It may be empty also where the answer is no: then there is nothing
    /// to add to that.
    using Answer = std::function<void(bool success, const QString &error)>;

    using QObject::QObject;

    /// Whether an evaluation could succeed, by what was last known: false until the first answer. Cheap, for
    /// drawing.
    virtual bool isUsable() const = 0;

    /// Asks the machine anew whether an evaluation could succeed, and keeps the answer for `isUsable`.
    virtual void check(Answer answer) = 0;
    void refresh() { check({}); }

    /// Asks the user for the proof; `reason` says what for. There is one evaluation at a time: one that is
    /// under way gives way to the new one, and fails without an error.
    virtual void evaluate(const QString &reason, Answer answer) = 0;

    /// Ends the evaluation under way: it fails without an error. Harmless where there is none.
    virtual void cancel() = 0;

    /// The reason of the evaluation that waits for the user, where it is the program that has to show it;
    /// empty where nothing waits, and always on a desktop that asks its users itself.
    virtual QString prompt() const = 0;

Q_SIGNALS:
    void usableChanged();
    void promptChanged();
};

} // namespace quillbay::platform
