#include "analytics/MarlpostManager.h"

#include "analytics/MarlpostLogger.h"

#include <algorithm>
#include <chrono>

namespace quillbay {

namespace {

bool isIdleNow(const SerialQueue &queue)
{
    return queue.waitUntilDone(std::chrono::milliseconds(0));
}

} // namespace

MarlpostManager &MarlpostManager::sharedInstance()
{
    static MarlpostManager &instance = *new MarlpostManager;
    return instance;
}

std::shared_ptr<MarlpostInstance> MarlpostManager::initialize(const MarlpostOptions &options,
                                                              const MarlpostSurroundings &surroundings)
{
    const std::lock_guard guard(m_mutex);
    std::shared_ptr<MarlpostInstance> &instance = m_instances[options.instanceName.value_or(options.token)];
    if (!instance)
        instance = MarlpostInstance::create(options, surroundings);
    m_mainInstance = instance;
    return instance;
}

std::shared_ptr<MarlpostInstance> MarlpostManager::getInstance(const std::string &name) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_instances.find(name);
    if (found != m_instances.end())
        return found->second;
    MarlpostLogger::warning("no such instance: ", name);
    return nullptr;
}

std::shared_ptr<MarlpostInstance> MarlpostManager::mainInstance() const
{
    const std::lock_guard guard(m_mutex);
    return m_mainInstance;
}

bool MarlpostManager::isIdle() const
{
    const std::lock_guard guard(m_mutex);
    return std::all_of(m_instances.begin(), m_instances.end(), [](const auto &entry) {
        // The network queue hands work back to the tracking queue.
        return isIdleNow(entry.second->networkQueue()) && isIdleNow(entry.second->trackingQueue());
    });
}

} // namespace quillbay
