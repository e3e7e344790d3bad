#pragma once

#include "analytics/MarlpostPersistence.h"
#include "analytics/MarlpostType.h"
#include "analytics/StoredEntity.h"

#include <functional>

namespace quillbay {

class SessionMetadata;

/// Takes the records of `People` and `Group`: the client instance as they see it.
class RecordQueue
{
public:
    struct Record
    {
        MarlpostDictionary entity;
        bool isHeldBack = false; ///< Until the user is identified.
    };
    using Builder = std::function<Record(const MarlpostIdentity &identity, SessionMetadata &session)>;

    virtual ~RecordQueue() = default;

    /// Seconds since 1970.
    virtual double now() const = 0;

    /// Builds the record on the tracking queue, with the identity of that moment, and stores it; nothing
    /// happens while opted out. Returns at once. Thread: any.
    virtual void addRecord(PersistenceType type, Builder build) = 0;
};

} // namespace quillbay
