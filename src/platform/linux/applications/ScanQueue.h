#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/applications/FolderListing.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace quillbay::platform {

/// One batch of a scan and what was found in it.
struct ScanTask
{
    ScanBatch batch;
    std::vector<InstalledApplication> found;
};

/// Passes batches from the thread that lists folders to those that read files. The tasks stay where they are
/// and in the order in which they were added, until the queue ends; only the thread that took one touches it.
class ScanQueue
{
public:
    void add(ScanBatch &&batch);
    /// No more batches come.
    void close();

    /// The next task; waits for it. Null when the queue is closed and all were taken.
    ScanTask *take();

    /// What was found, in the order of the batches. To be called when all who took tasks have ended.
    std::vector<InstalledApplication> found();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<ScanTask> m_tasks;
    size_t m_taken = 0;
    bool m_closed = false;
};

} // namespace quillbay::platform
