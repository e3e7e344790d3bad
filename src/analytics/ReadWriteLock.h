#pragma once

#include <mutex>
#include <shared_mutex>
#include <utility>

namespace quillbay {

/// The lock of an instance's shared state: any number of readers, or one writer. What a function gives back
/// must be a value, not a reference into the state. Not recursive. Thread: any.
class ReadWriteLock
{
public:
    template <typename Function>
    auto read(Function &&function) const
    {
        const std::shared_lock guard(m_mutex);
        return std::forward<Function>(function)();
    }

    template <typename Function>
    auto write(Function &&function)
    {
        const std::unique_lock guard(m_mutex);
        return std::forward<Function>(function)();
    }

private:
    mutable std::shared_mutex m_mutex;
};

} // namespace quillbay
