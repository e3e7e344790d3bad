#include "bench/FrameMeter.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <ctime>

namespace quillbay {

namespace {

constexpr int patience = 10000; // milliseconds
constexpr int rest = 60;        // milliseconds without a frame, after which none is on its way

double now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

MeteredApplication &application()
{
    return *static_cast<MeteredApplication *>(QCoreApplication::instance());
}

} // namespace

double MeteredApplication::worked() const
{
    return m_worked + (m_depth > 0 ? now() - m_begin : 0);
}

void MeteredApplication::work(const std::function<void()> &something)
{
    if (m_depth++ == 0)
        m_begin = now();
    something();
    if (--m_depth == 0)
        m_worked += now() - m_begin;
}

bool MeteredApplication::notify(QObject *receiver, QEvent *event)
{
    if (QThread::currentThread() != thread())
        return QGuiApplication::notify(receiver, event);
    bool isHandled = false;
    work([&] { isHandled = QGuiApplication::notify(receiver, event); });
    return isHandled;
}

FrameMeter::FrameMeter(QQuickWindow &window)
    : m_window(window)
{
    connect(&window, &QQuickWindow::frameSwapped, this, [this] {
        const double worked = application().worked();
        m_times.push_back(worked - m_mark);
        m_mark = worked;
    });
}

double FrameMeter::frame(const std::function<void()> &cause)
{
    m_times.clear();
    application().work(cause);
    m_window.update();
    const QDeadlineTimer deadline(patience);
    while (m_times.empty()) {
        if (deadline.hasExpired())
            qFatal("no frame came");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return m_times.front();
}

std::vector<double> FrameMeter::change(const std::function<void()> &cause)
{
    m_mark = application().worked();
    std::vector<double> times{frame(cause)};
    QEventLoop loop;
    QTimer quiet;
    connect(&quiet, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(&m_window, &QQuickWindow::frameSwapped, &quiet, [&quiet] { quiet.start(); });
    quiet.start(rest);
    loop.exec();
    times.insert(times.end(), m_times.begin() + 1, m_times.end());
    return times;
}

} // namespace quillbay
