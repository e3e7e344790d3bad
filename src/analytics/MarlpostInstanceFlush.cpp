// The way to the service.

#include "analytics/MainQueue.h"
#include "analytics/MarlpostInstance.h"

#include <utility>

namespace quillbay {

void MarlpostInstance::flush(bool performFullFlush, Completion completion)
{
    if (hasOptedOutTracking() || !m_flush.canSend()) {
        MainQueue::async(std::move(completion));
        return;
    }
    onTrackingQueue([performFullFlush, completion = std::move(completion)](MarlpostInstance &self) mutable {
        self.m_pendingFlushes.push_back({performFullFlush, std::move(completion)});
        self.flushNext();
    });
}

void MarlpostInstance::flushNext()
{
    if (m_isFlushing || m_pendingFlushes.empty())
        return;
    m_isFlushing = true;
    PendingFlush next = std::move(m_pendingFlushes.front());
    m_pendingFlushes.pop_front();
    Queues queues;
    for (const PersistenceType type : AllPersistenceTypes)
        queues[std::size_t(type)] = loadUnsent(type, next.isFull);

    m_networkQueue.async([self = shared_from_this(), queues = std::move(queues),
                          completion = std::move(next.completion),
                          loadedAt = m_forgettings.load()]() mutable {
        self->m_forgettingsAtLoad = loadedAt;
        for (const PersistenceType type : AllPersistenceTypes)
            self->flushQueue(std::move(queues[std::size_t(type)]), type);
        MainQueue::async(std::move(completion));
        self->onTrackingQueue([](MarlpostInstance &instance) {
            instance.m_isFlushing = false;
            instance.flushNext();
        });
    });
}

StoredEntities MarlpostInstance::loadUnsent(PersistenceType type, bool isFull)
{
    if (hasOptedOutTracking())
        return {};
    removeTaken(type, {});
    const std::int64_t size = isFull ? MPDB::AllRows : std::int64_t(m_flush.flushBatchSize());
    StoredEntities entities =
        m_persistence->loadEntitiesInBatch(type, size, false, !m_trackAutomaticEventsEnabled);
    const std::set<std::int32_t> &taken = m_taken[std::size_t(type)];
    std::erase_if(entities, [&](const StoredEntity &entity) { return taken.contains(entity.id); });
    return entities;
}

void MarlpostInstance::flushQueue(StoredEntities queue, FlushType type)
{
    if (!maySend() || queue.empty())
        return;
    ServerProxyResource extra;
    if (const std::shared_ptr<MarlpostProxyServerDelegate> proxy = m_proxyServerDelegate.lock())
        extra = proxy->resourceForNewRequest(m_name);
    m_flush.flushQueueInBatches(std::move(queue), type, extra.headers, extra.queryItems);
}

bool MarlpostInstance::maySend() const
{
    return !hasOptedOutTracking() && m_forgettings == m_forgettingsAtLoad;
}

void MarlpostInstance::flushSuccess(FlushType type, std::vector<std::int32_t> ids)
{
    onTrackingQueue([type, ids = std::move(ids)](MarlpostInstance &self) { self.removeTaken(type, ids); });
}

void MarlpostInstance::removeTaken(PersistenceType type, const std::vector<std::int32_t> &ids)
{
    std::set<std::int32_t> &taken = m_taken[std::size_t(type)];
    taken.insert(ids.begin(), ids.end());
    const std::vector<std::int32_t> all(taken.begin(), taken.end());
    if (m_persistence->removeEntitiesInBatch(type, all))
        taken.clear();
}

} // namespace quillbay
