#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace quillbay {

/// Runs tasks one after the other, in the order they came, on one thread of its own, which starts with the
/// first task and then always is the same one. Standard threads and locks, so that ThreadSanitizer
/// understands them. Idle, it waits without a timer.
///
/// Whoever makes the queue may let it go at any time, the queue's own thread included: nobody waits, what is
/// queued still runs, and the thread ends after it. So a task holds what it needs by value or by shared
/// pointer, and something that owns the queue by weak pointer at most where the end of it matters. At the end
/// of the process the thread is simply gone.
/// Thread: any.
class SerialQueue
{
public:
    using Task = std::function<void()>;

    /// The label is for people.
    explicit SerialQueue(std::string label);
    ~SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    const std::string &label() const;
    /// Queues the task and returns at once. A task must not throw.
    void async(Task task);
    /// Whether the caller runs on this queue.
    bool isCurrent() const;
    /// Waits until everything queued before has run; false when the time is up first. Not from the queue
    /// itself, and not on the main thread of the program: for tests and benchmarks.
    bool waitUntilDone(std::chrono::milliseconds bound) const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace quillbay
