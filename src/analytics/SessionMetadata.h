#pragma once

#include "analytics/MarlpostType.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quillbay {

class SerialQueue;

/// The session that entities belong to: from the start of the client, or its last reset.
/// Thread: the tracking queue, after the constructor.
class SessionMetadata
{
public:
    using Clock = std::function<double()>; ///< Seconds since 1970.

    /// Begins a session. The queue must outlive this object.
    SessionMetadata(const SerialQueue &trackingQueue, Clock clock);

    /// Begins another one.
    void reset();

    /// { "$mp_metadata": … } for the next entity of its kind, which it counts. Identifiers are 16 hexadecimal
    /// digits; the sequence number begins at 0, for events and for people.
    MarlpostDictionary toDict(bool isEvent);

private:
    void begin();

    const SerialQueue &m_trackingQueue;
    Clock m_clock;
    std::int64_t m_eventsCounter = 0;
    std::int64_t m_peopleCounter = 0;
    std::string m_sessionID;
    std::int64_t m_sessionStartEpoch = 0;
};

} // namespace quillbay
