#pragma once

#include <QEventLoop>
#include <QMetaObject>

#include <future>
#include <thread>

namespace quillbay::testing {

/// Runs `work` on a thread of its own while this one turns its event loop, as the program's does; returns
/// what it returned.
template <typename Work>
auto onWorker(Work work)
{
    std::packaged_task<decltype(work())()> task(std::move(work));
    auto result = task.get_future();
    QEventLoop loop;
    std::thread worker([&] {
        task();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    worker.join();
    return result.get();
}

} // namespace quillbay::testing
