#pragma once

#include "analytics/MarlpostPersistence.h"
#include "analytics/MarlpostType.h"

#include <memory>
#include <span>
#include <string>

namespace quillbay {

class AutomaticProperties;

/// Builds the entities of events. Pure but for the log. Thread: any.
class Track
{
public:
    Track(std::string apiToken, std::shared_ptr<const AutomaticProperties> automaticProperties);

    /// The entity { "event", "properties" } of an event at `epochInterval` (seconds since 1970). Later ones
    /// win: automatic properties, token and time and identity, super properties, the caller's. An event that
    /// was being timed gets "$duration", in seconds to the millisecond, and is removed from `timedEvents`.
    MarlpostDictionary track(const std::string &event, MarlpostDictionary properties,
                             MarlpostDictionary &timedEvents, const MarlpostDictionary &superProperties,
                             const MarlpostIdentity &identity, double epochInterval) const;

    /// Sets what is missing, or equal to `defaultValue` where there is one.
    static void registerSuperPropertiesOnce(MarlpostDictionary &superProperties,
                                            const MarlpostDictionary &properties,
                                            const MarlpostType *defaultValue);

private:
    const std::string m_apiToken;
    const std::shared_ptr<const AutomaticProperties> m_automaticProperties;
};

/// Stops a debug build with a message where a value is not one that can be sent, a number that is not finite;
/// other builds log it and answer false.
bool assertPropertyTypes(const MarlpostDictionary &properties);

/// Whole milliseconds since 1970, as entities carry them.
std::int64_t millisecondsOf(double epochInterval);

} // namespace quillbay
