#include "platform/linux/applications/ScanQueue.h"

#include <iterator>
#include <utility>

namespace quillbay::platform {

void ScanQueue::add(ScanBatch &&batch)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back({std::move(batch), {}});
    }
    m_changed.notify_one();
}

void ScanQueue::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_all();
}

ScanTask *ScanQueue::take()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_closed || m_taken < m_tasks.size(); });
    return m_taken < m_tasks.size() ? &m_tasks[m_taken++] : nullptr;
}

std::vector<InstalledApplication> ScanQueue::found()
{
    const std::lock_guard lock(m_mutex);
    size_t total = 0;
    for (const ScanTask &task : m_tasks)
        total += task.found.size();
    std::vector<InstalledApplication> result;
    result.reserve(total);
    for (ScanTask &task : m_tasks)
        std::move(task.found.begin(), task.found.end(), std::back_inserter(result));
    return result;
}

} // namespace quillbay::platform
