#pragma once

#include "analytics/MarlpostInstance.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace quillbay {

/// Keeps the client instances, one for each name, and which of them is the main one.
/// Thread: any, but for `initialize`, which belongs to the main thread.
class MarlpostManager
{
public:
    /// The process's own. It is never destroyed: the queues of its instances may run to the very end.
    static MarlpostManager &sharedInstance();

    /// Starts an instance, or finds the one that has the name already, whatever the other options then say;
    /// makes it the main one.
    std::shared_ptr<MarlpostInstance> initialize(const MarlpostOptions &options,
                                                 const MarlpostSurroundings &surroundings);

    /// Null, with a line in the log, where there is no such instance.
    std::shared_ptr<MarlpostInstance> getInstance(const std::string &name) const;
    /// Null before the first one.
    std::shared_ptr<MarlpostInstance> mainInstance() const;

    /// Whether no instance has anything queued or under way.
    bool isIdle() const;

private:
    mutable std::mutex m_mutex;
    std::map<std::string, std::shared_ptr<MarlpostInstance>> m_instances;
    std::shared_ptr<MarlpostInstance> m_mainInstance;
};

} // namespace quillbay
