#include "analytics/MainQueue.h"

#include <QCoreApplication>

#include <deque>
#include <mutex>
#include <utility>

namespace quillbay::MainQueue {

namespace {

/// The tasks travel here and Qt's event carries nothing: the hand-over is by a lock that ThreadSanitizer
/// knows.
struct Tasks
{
    std::mutex mutex;
    std::deque<std::function<void()>> waiting;
};

/// Never destroyed: threads may still run when the process takes itself apart.
Tasks &tasks()
{
    static Tasks &instance = *new Tasks;
    return instance;
}

void runNext()
{
    std::function<void()> task;
    {
        const std::lock_guard guard(tasks().mutex);
        if (tasks().waiting.empty())
            return;
        task = std::move(tasks().waiting.front());
        tasks().waiting.pop_front();
    }
    task();
}

} // namespace

void async(std::function<void()> task)
{
    QCoreApplication *const application = QCoreApplication::instance();
    if (!task || !application)
        return;
    {
        const std::lock_guard guard(tasks().mutex);
        tasks().waiting.push_back(std::move(task));
    }
    QMetaObject::invokeMethod(application, runNext, Qt::QueuedConnection);
}

} // namespace quillbay::MainQueue
