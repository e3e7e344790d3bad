#pragma once

#include <QGuiApplication>
#include <QQuickWindow>

#include <functional>
#include <vector>

namespace quillbay {

/// An application that knows how long its main thread has worked: the time inside events, not the time
/// between them.
class MeteredApplication : public QGuiApplication
{
public:
    using QGuiApplication::QGuiApplication;

    /// Milliseconds of work so far, up to this moment.
    double worked() const;
    /// Does something as if it were an event.
    void work(const std::function<void()> &something);

    bool notify(QObject *receiver, QEvent *event) override;

private:
    int m_depth = 0;
    double m_begin = 0;
    double m_worked = 0;
};

/// Times the frames of one window that is drawn on the main thread. The application must be a
/// `MeteredApplication`. Ends the program if a frame does not come within ten seconds.
class FrameMeter : public QObject
{
public:
    explicit FrameMeter(QQuickWindow &window);

    /// Does something and waits for the next frame. Its time, in milliseconds of work since the frame before.
    double frame(const std::function<void()> &cause);
    /// Does something and waits until no frame has come for a while. The times of all frames that it led to,
    /// of which there is at least one.
    std::vector<double> change(const std::function<void()> &cause);

private:
    QQuickWindow &m_window;
    std::vector<double> m_times;
    double m_mark = 0;
};

} // namespace quillbay
