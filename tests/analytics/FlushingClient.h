#pragma once

#include "analytics/Flush.h"
#include "analytics/MarlpostPersistence.h"
#include "analytics/SerialQueue.h"

#include <memory>
#include <string>

namespace quillbay::testing {

/// A client instance reduced to its two queues, its store and its flush: what it takes to see rows go out.
class FlushingClient final : public FlushDelegate, public std::enable_shared_from_this<FlushingClient>
{
public:
    static constexpr const char *Name = "0123abcd";

    static std::shared_ptr<FlushingClient>
    make(const MarlpostPersistence::Places &places, const std::string &serverURL, bool useGzip = false,
         FlushRequest::Surroundings surroundings = FlushRequest::defaultSurroundings());

    /// Stores entities {"event": "NAME 0", "properties": {"number": 0, ...}} and so on; true once they are.
    bool store(int count, PersistenceType type = PersistenceType::Events, const std::string &name = "event");
    void flush(bool performFullFlush, std::function<void()> completion) override;
    void flushSuccess(FlushType type, std::vector<std::int32_t> ids) override;
    /// Flushes, and waits until all of it is done; false where it takes too long.
    bool flushAndWait(bool performFullFlush = false);
    /// What is still stored.
    StoredEntities stored(PersistenceType type = PersistenceType::Events);

    Flush &sender() { return *m_flush; }
    SerialQueue &networkQueue() { return m_networkQueue; }

private:
    std::unique_ptr<MarlpostPersistence> m_persistence;
    std::unique_ptr<Flush> m_flush;
    SerialQueue m_trackingQueue{"tracking"};
    SerialQueue m_networkQueue{"network"};
};

} // namespace quillbay::testing
