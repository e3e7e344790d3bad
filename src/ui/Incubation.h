#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QQmlIncubationController>

namespace quillbay {

/// Makes what the screens ask for asynchronously, in slices between the other events. The window's own
/// controller takes two thirds of a frame at once where it draws on the main thread, which would hold up what
/// moves meanwhile. Rests while nothing is being made. Thread: main thread.
class Incubation final : public QObject, public QQmlIncubationController
{
public:
    static constexpr int slice = 4; ///< Milliseconds; the object at hand is finished.

protected:
    void incubatingObjectCountChanged(int count) override;
    void timerEvent(QTimerEvent *) override;

private:
    QBasicTimer m_timer;
};

} // namespace quillbay
