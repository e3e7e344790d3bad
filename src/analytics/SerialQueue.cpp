#include "analytics/SerialQueue.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace quillbay {

struct SerialQueue::State
{
    explicit State(std::string text)
        : label(std::move(text))
    {
    }

    void run();

    const std::string label;
    mutable std::mutex mutex; ///< For what follows.
    std::condition_variable changed;
    mutable std::condition_variable done;
    std::deque<Task> tasks;
    std::uint64_t queuedCount = 0;
    std::uint64_t doneCount = 0;
    std::uint64_t awaitedCount = 0; ///< Of done tasks, where somebody waits for so many.
    std::thread::id thread;
    bool isClosed = false;
};

void SerialQueue::State::run()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return !tasks.empty() || isClosed; });
        if (tasks.empty())
            return;
        Task task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr; // what it holds goes before the next one runs, and without the lock
        lock.lock();
        // Whoever waits for many tasks is not woken by each.
        if (++doneCount == awaitedCount)
            done.notify_all();
    }
}

SerialQueue::SerialQueue(std::string label)
    : m_state(std::make_shared<State>(std::move(label)))
{
}

SerialQueue::~SerialQueue()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->isClosed = true;
    m_state->changed.notify_one();
}

const std::string &SerialQueue::label() const
{
    return m_state->label;
}

void SerialQueue::async(Task task)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->tasks.push_back(std::move(task));
    if (++m_state->queuedCount > 1) {
        m_state->changed.notify_one();
        return;
    }
    std::thread thread([state = m_state] { state->run(); });
    m_state->thread = thread.get_id();
    thread.detach();
}

bool SerialQueue::isCurrent() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->thread == std::this_thread::get_id();
}

bool SerialQueue::waitUntilDone(std::chrono::milliseconds bound) const
{
    std::unique_lock lock(m_state->mutex);
    const std::uint64_t queued = m_state->queuedCount;
    return m_state->done.wait_for(lock, bound, [&] {
        const bool isDone = m_state->doneCount >= queued;
        if (!isDone && m_state->doneCount >= m_state->awaitedCount)
            m_state->awaitedCount = queued;
        else if (!isDone)
            m_state->awaitedCount = std::min(m_state->awaitedCount, queued);
        return isDone;
    });
}

} // namespace quillbay
