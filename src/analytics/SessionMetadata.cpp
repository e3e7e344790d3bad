#include "analytics/SessionMetadata.h"

#include "analytics/SerialQueue.h"

#include <QRandomGenerator>

#include <cassert>
#include <cstdio>
#include <utility>

namespace quillbay {

namespace {

std::string randomId()
{
    char text[17];
    QRandomGenerator *const random = QRandomGenerator::global();
    std::snprintf(text, sizeof text, "%08x%08x", random->generate(), random->generate());
    return text;
}

} // namespace

SessionMetadata::SessionMetadata(const SerialQueue &trackingQueue, Clock clock)
    : m_trackingQueue(trackingQueue)
    , m_clock(std::move(clock))
{
    begin();
}

void SessionMetadata::reset()
{
    assert(m_trackingQueue.isCurrent());
    begin();
}

void SessionMetadata::begin()
{
    m_eventsCounter = 0;
    m_peopleCounter = 0;
    m_sessionID = randomId();
    m_sessionStartEpoch = std::int64_t(m_clock());
}

MarlpostDictionary SessionMetadata::toDict(bool isEvent)
{
    assert(m_trackingQueue.isCurrent());
    std::int64_t &counter = isEvent ? m_eventsCounter : m_peopleCounter;
    return {{"$mp_metadata", MarlpostDictionary{{"$mp_event_id", randomId()},
                                                {"$mp_session_id", m_sessionID},
                                                {"$mp_session_seq_id", counter++},
                                                {"$mp_session_start_sec", m_sessionStartEpoch}}}};
}

} // namespace quillbay
