#include "analytics/Track.h"

#include "analytics/AutomaticProperties.h"
#include "analytics/MarlpostLogger.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace quillbay {

namespace {

double toMilliseconds(double seconds)
{
    std::array<char, 32> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, 3);
    double rounded = 0;
    std::from_chars(text.data(), written.ptr, rounded);
    return rounded;
}

} // namespace

Track::Track(std::string apiToken, std::shared_ptr<const AutomaticProperties> automaticProperties)
    : m_apiToken(std::move(apiToken))
    , m_automaticProperties(std::move(automaticProperties))
{
}

MarlpostDictionary Track::track(const std::string &event, MarlpostDictionary properties,
                                MarlpostDictionary &timedEvents, const MarlpostDictionary &superProperties,
                                const MarlpostIdentity &identity, double epochInterval) const
{
    if (event.empty())
        MarlpostLogger::info("marlpost track called with empty event parameter. using 'mp_event'");
    const std::string name = event.empty() ? "mp_event" : event;

    MarlpostDictionary all = m_automaticProperties->properties();
    all.append("token", m_apiToken);
    all.append("time", millisecondsOf(epochInterval));
    if (const MarlpostType *start = timedEvents.find(name)) {
        all.append("$duration", toMilliseconds(epochInterval - start->toDouble()));
        timedEvents.remove(name);
    }
    all.append("distinct_id", identity.distinctID);
    if (identity.anonymousId)
        all.append("$device_id", *identity.anonymousId);
    if (identity.userId)
        all.append("$user_id", *identity.userId);
    if (identity.hadPersistedDistinctId)
        all.append("$had_persisted_distinct_id", *identity.hadPersistedDistinctId);
    all.merge(superProperties);
    all.merge(std::move(properties));
    return {{"event", name}, {"properties", std::move(all)}};
}

void Track::registerSuperPropertiesOnce(MarlpostDictionary &superProperties,
                                        const MarlpostDictionary &properties,
                                        const MarlpostType *defaultValue)
{
    for (const auto &[key, value] : properties) {
        const MarlpostType *current = superProperties.find(key);
        if (!current || (defaultValue && *current == *defaultValue))
            superProperties.set(key, value);
    }
}

bool assertPropertyTypes(const MarlpostDictionary &properties)
{
    for (const auto &[key, value] : properties) {
        if (value.isValid())
            continue;
        const std::string message =
            "Property values must be of valid type (MarlpostType) and valid value. Got " +
            std::string(value.typeName()) + " and Value " + value.description();
#ifndef NDEBUG
        qFatal("%s", message.c_str());
#endif
        MarlpostLogger::error(message);
        return false;
    }
    return true;
}

std::int64_t millisecondsOf(double epochInterval)
{
    return std::llround(epochInterval * 1000);
}

} // namespace quillbay
