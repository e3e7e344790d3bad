#include "analytics/FlushingClient.h"

#include <utility>

namespace quillbay::testing {

namespace {

constexpr auto Bound = std::chrono::minutes(2);

} // namespace

std::shared_ptr<FlushingClient> FlushingClient::make(const MarlpostPersistence::Places &places,
                                                     const std::string &serverURL, bool useGzip,
                                                     FlushRequest::Surroundings surroundings)
{
    auto client = std::make_shared<FlushingClient>();
    auto options = MarlpostPersistence::defaultOptions();
    options.keepsUnsent = serverURL.empty();
    client->m_persistence = std::make_unique<MarlpostPersistence>(Name, places, options);
    client->m_flush = std::make_unique<Flush>(serverURL, useGzip, std::move(surroundings));
    client->m_flush->setDelegate(client);
    return client;
}

bool FlushingClient::store(int count, PersistenceType type, const std::string &name)
{
    const auto isStored = std::make_shared<bool>(true);
    m_trackingQueue.async([self = shared_from_this(), isStored, count, type, name] {
        for (int i = 0; i < count; ++i) {
            const MarlpostDictionary entity = {{"event", name + ' ' + std::to_string(i)},
                                               {"$distinct_id", "someone"},
                                               {"properties", MarlpostDictionary{{"number", i}}}};
            *isStored = self->m_persistence->saveEntity(entity, type) && *isStored;
        }
    });
    return m_trackingQueue.waitUntilDone(Bound) && *isStored;
}

void FlushingClient::flush(bool performFullFlush, std::function<void()> completion)
{
    m_trackingQueue.async([self = shared_from_this(), performFullFlush, completion = std::move(completion)] {
        const std::int64_t size =
            performFullFlush ? MPDB::AllRows : std::int64_t(self->m_flush->flushBatchSize());
        auto queues = std::make_shared<std::array<StoredEntities, AllPersistenceTypes.size()>>();
        for (const PersistenceType type : AllPersistenceTypes)
            (*queues)[std::size_t(type)] = self->m_persistence->loadEntitiesInBatch(type, size);
        self->m_networkQueue.async([self, queues, completion] {
            for (const PersistenceType type : AllPersistenceTypes)
                self->m_flush->flushQueueInBatches(std::move((*queues)[std::size_t(type)]), type);
            if (completion)
                completion();
        });
    });
}

void FlushingClient::flushSuccess(FlushType type, std::vector<std::int32_t> ids)
{
    m_trackingQueue.async([self = shared_from_this(), type, ids = std::move(ids)] {
        self->m_persistence->removeEntitiesInBatch(type, ids);
    });
}

bool FlushingClient::flushAndWait(bool performFullFlush)
{
    flush(performFullFlush, {});
    return m_trackingQueue.waitUntilDone(Bound) && m_networkQueue.waitUntilDone(Bound) &&
           m_trackingQueue.waitUntilDone(Bound);
}

StoredEntities FlushingClient::stored(PersistenceType type)
{
    auto rows = std::make_shared<StoredEntities>();
    m_trackingQueue.async(
        [self = shared_from_this(), type, rows] { *rows = self->m_persistence->loadEntitiesInBatch(type); });
    return m_trackingQueue.waitUntilDone(Bound) ? *rows : StoredEntities();
}

} // namespace quillbay::testing
