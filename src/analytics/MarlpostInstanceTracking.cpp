// Events, what goes with them, and groups.

#include "analytics/MarlpostInstance.h"
#include "analytics/MarlpostLogger.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

std::string textOf(const MarlpostType &value)
{
    const std::string *text = value.get<std::string>();
    return text ? *text : value.description();
}

/// The groups under a key as they are now; what is no list counts as none.
MarlpostArray groupsOf(const MarlpostDictionary &superProperties, const std::string &groupKey)
{
    const MarlpostType *value = superProperties.find(groupKey);
    const MarlpostArray *groups = value ? value->get<MarlpostArray>() : nullptr;
    return groups ? *groups : MarlpostArray();
}

} // namespace

void MarlpostInstance::track(const std::string &event, MarlpostDictionary properties)
{
    if (hasOptedOutTracking() || !assertPropertyTypes(properties))
        return;
    onTrackingQueue(
        [event, properties = std::move(properties), epoch = now()](MarlpostInstance &self) mutable {
            self.saveEvent(event, std::move(properties), epoch);
        });
}

void MarlpostInstance::trackWithGroups(const std::string &event, MarlpostDictionary properties,
                                       const MarlpostDictionary &groups)
{
    properties.merge(groups);
    track(event, std::move(properties));
}

void MarlpostInstance::saveEvent(const std::string &event, MarlpostDictionary properties,
                                 double epochInterval)
{
    if (hasOptedOutTracking())
        return;
    bool wasTimed = false;
    MarlpostDictionary entity = m_globalLock.write([&] {
        const std::size_t timedEvents = m_timedEvents.size();
        MarlpostDictionary built = m_track.track(event, std::move(properties), m_timedEvents,
                                                 m_superProperties, m_identity, epochInterval);
        wasTimed = m_timedEvents.size() != timedEvents;
        return built;
    });
    entity.merge(m_sessionMetadata.toDict(true));
    m_persistence->saveEntity(entity, PersistenceType::Events);
    if (wasTimed)
        m_persistence->saveTimedEvents(m_globalLock.read([this] { return m_timedEvents; }));
}

void MarlpostInstance::addRecord(PersistenceType type, Builder build)
{
    if (hasOptedOutTracking())
        return;
    onTrackingQueue([type, build = std::move(build)](MarlpostInstance &self) {
        if (self.hasOptedOutTracking())
            return;
        const Record record = build(self.identity(), self.m_sessionMetadata);
        self.m_persistence->saveEntity(record.entity, type, record.isHeldBack);
    });
}

void MarlpostInstance::time(const std::string &event)
{
    if (event.empty()) {
        MarlpostLogger::error("marlpost cannot time an empty event");
        return;
    }
    onTrackingQueue([event, epoch = now()](MarlpostInstance &self) {
        self.changeTimedEvents([&](MarlpostDictionary &timedEvents) { timedEvents.set(event, epoch); });
    });
}

double MarlpostInstance::eventElapsedTime(const std::string &event) const
{
    return m_globalLock.read([&] {
        const MarlpostType *start = m_timedEvents.find(event);
        return start ? now() - start->toDouble() : 0;
    });
}

void MarlpostInstance::clearTimedEvent(const std::string &event)
{
    if (event.empty()) {
        MarlpostLogger::error("marlpost cannot clear an empty timed event");
        return;
    }
    onTrackingQueue([event](MarlpostInstance &self) {
        self.changeTimedEvents([&](MarlpostDictionary &timedEvents) { timedEvents.remove(event); });
    });
}

void MarlpostInstance::clearTimedEvents()
{
    onTrackingQueue([](MarlpostInstance &self) {
        self.changeTimedEvents([](MarlpostDictionary &timedEvents) { timedEvents.clear(); });
    });
}

void MarlpostInstance::changeTimedEvents(const std::function<void(MarlpostDictionary &)> &change)
{
    const MarlpostDictionary changed = m_globalLock.write([&] {
        change(m_timedEvents);
        return m_timedEvents;
    });
    m_persistence->saveTimedEvents(changed);
}

void MarlpostInstance::registerSuperProperties(const MarlpostDictionary &properties)
{
    if (!assertPropertyTypes(properties))
        return;
    onTrackingQueue([properties](MarlpostInstance &self) {
        self.changeSuperProperties([&](MarlpostDictionary &all) { all.merge(properties); });
    });
}

void MarlpostInstance::registerSuperPropertiesOnce(const MarlpostDictionary &properties,
                                                   const std::optional<MarlpostType> &defaultValue)
{
    if (!assertPropertyTypes(properties))
        return;
    onTrackingQueue([properties, defaultValue](MarlpostInstance &self) {
        self.changeSuperProperties([&](MarlpostDictionary &all) {
            Track::registerSuperPropertiesOnce(all, properties, defaultValue ? &*defaultValue : nullptr);
        });
    });
}

void MarlpostInstance::unregisterSuperProperty(const std::string &property)
{
    onTrackingQueue([property](MarlpostInstance &self) {
        self.changeSuperProperties([&](MarlpostDictionary &all) { all.remove(property); });
    });
}

void MarlpostInstance::clearSuperProperties()
{
    onTrackingQueue([](MarlpostInstance &self) {
        self.changeSuperProperties([](MarlpostDictionary &all) { all.clear(); });
    });
}

MarlpostDictionary MarlpostInstance::currentSuperProperties() const
{
    return m_globalLock.read([this] { return m_superProperties; });
}

void MarlpostInstance::changeSuperProperties(const std::function<void(MarlpostDictionary &)> &change)
{
    const MarlpostDictionary changed = m_globalLock.write([&] {
        change(m_superProperties);
        return m_superProperties;
    });
    m_persistence->saveSuperProperties(changed);
}

void MarlpostInstance::setGroup(const std::string &groupKey, const MarlpostArray &groupIDs)
{
    if (hasOptedOutTracking() || !assertPropertyTypes({{groupKey, groupIDs}}))
        return;
    onTrackingQueue([groupKey, groupIDs](MarlpostInstance &self) {
        if (!self.hasOptedOutTracking())
            self.changeSuperProperties([&](MarlpostDictionary &all) { all.set(groupKey, groupIDs); });
    });
    m_people->set({{groupKey, groupIDs}});
}

void MarlpostInstance::addGroup(const std::string &groupKey, const MarlpostType &groupID)
{
    if (hasOptedOutTracking() || !assertPropertyTypes({{groupKey, groupID}}))
        return;
    onTrackingQueue([groupKey, groupID](MarlpostInstance &self) {
        if (self.hasOptedOutTracking())
            return;
        self.changeSuperProperties([&](MarlpostDictionary &all) {
            MarlpostArray groups = groupsOf(all, groupKey);
            if (std::find(groups.begin(), groups.end(), groupID) == groups.end())
                groups.push_back(groupID);
            all.set(groupKey, std::move(groups));
        });
    });
    m_people->unionValues({{groupKey, MarlpostArray{groupID}}});
}

void MarlpostInstance::removeGroup(const std::string &groupKey, const MarlpostType &groupID)
{
    if (hasOptedOutTracking() || !assertPropertyTypes({{groupKey, groupID}}))
        return;
    onTrackingQueue([groupKey, groupID](MarlpostInstance &self) {
        if (self.hasOptedOutTracking())
            return;
        bool isLast = false;
        self.changeSuperProperties([&](MarlpostDictionary &all) {
            MarlpostArray groups = groupsOf(all, groupKey);
            std::erase(groups, groupID);
            isLast = groups.empty();
            if (isLast)
                all.remove(groupKey);
            else
                all.set(groupKey, std::move(groups));
        });
        if (isLast)
            self.m_people->unset({groupKey});
        else
            self.m_people->remove({{groupKey, groupID}});
    });
}

std::shared_ptr<Group> MarlpostInstance::getGroup(const std::string &groupKey, const MarlpostType &groupID)
{
    const std::string key = groupKey + "_" + textOf(groupID);
    return m_globalLock.write([&] {
        std::shared_ptr<Group> &group = m_groups[key];
        const bool collides = group && (group->groupKey() != groupKey || !(group->groupID() == groupID));
        if (collides)
            MarlpostLogger::info("groups dictionary key collision: ", key);
        if (!group || collides)
            group = std::make_shared<Group>(m_apiToken, groupKey, groupID, weak_from_this());
        return group;
    });
}

} // namespace quillbay
