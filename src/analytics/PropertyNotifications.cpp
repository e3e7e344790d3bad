#include "analytics/PropertyNotifications.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

struct Entry
{
    std::weak_ptr<void> owner;
    PropertyNotifications::Observer observer;
};

struct Observers
{
    std::mutex mutex;
    std::vector<Entry> entries;
};

/// Never destroyed: threads may still run when the process takes itself apart.
Observers &observers()
{
    static Observers &instance = *new Observers;
    return instance;
}

} // namespace

void PropertyNotifications::post(std::string_view name, const MarlpostDictionary &properties)
{
    std::vector<Entry> entries;
    {
        const std::lock_guard guard(observers().mutex);
        entries = observers().entries;
    }
    for (const Entry &entry : entries) {
        if (const std::shared_ptr<void> alive = entry.owner.lock())
            entry.observer(name, properties);
    }
}

void PropertyNotifications::addObserver(std::weak_ptr<void> owner, Observer observer)
{
    const std::lock_guard guard(observers().mutex);
    std::erase_if(observers().entries, [](const Entry &entry) { return entry.owner.expired(); });
    observers().entries.push_back({std::move(owner), std::move(observer)});
}

} // namespace quillbay
