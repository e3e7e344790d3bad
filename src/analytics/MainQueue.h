#pragma once

#include <functional>

/// The way from the client's queues to the main thread.
namespace quillbay::MainQueue {

/// Runs the task on the thread of the application object, in the order of the calls, once its event loop
/// comes to it; returns at once. Without an application object the task is dropped, as at the end of the
/// process. An empty task is none. Thread: any.
void async(std::function<void()> task);

} // namespace quillbay::MainQueue
