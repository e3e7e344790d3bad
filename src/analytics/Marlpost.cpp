#include "analytics/Marlpost.h"

#include "analytics/MarlpostLogger.h"
#include "analytics/MarlpostManager.h"
#include "analytics/Network.h"

namespace quillbay::Marlpost {

std::shared_ptr<MarlpostInstance> initialize(const MarlpostOptions &options,
                                             const MarlpostSurroundings &surroundings)
{
    return MarlpostManager::sharedInstance().initialize(options, surroundings);
}

MarlpostInstance &mainInstance()
{
    const std::shared_ptr<MarlpostInstance> instance = MarlpostManager::sharedInstance().mainInstance();
    if (!instance)
        qFatal("Marlpost::mainInstance was called before Marlpost::initialize");
    return *instance;
}

std::shared_ptr<MarlpostInstance> safeMainInstance()
{
    std::shared_ptr<MarlpostInstance> instance = MarlpostManager::sharedInstance().mainInstance();
    if (!instance)
        MarlpostLogger::warning("WARNING: Marlpost main instance is NOT initialized. Call "
                                "Marlpost.initialize(...) first.");
    return instance;
}

std::shared_ptr<MarlpostInstance> getInstance(const std::string &name)
{
    return MarlpostManager::sharedInstance().getInstance(name);
}

bool isIdle()
{
    return MarlpostManager::sharedInstance().isIdle() && Network::runningRequests() == 0;
}

} // namespace quillbay::Marlpost
