#include "analytics/Group.h"

#include "analytics/RecordQueue.h"
#include "analytics/Track.h"

#include <utility>

namespace quillbay {

Group::Group(std::string apiToken, std::string groupKey, MarlpostType groupID,
             std::weak_ptr<RecordQueue> queue)
    : m_apiToken(std::move(apiToken))
    , m_groupKey(std::move(groupKey))
    , m_groupID(std::move(groupID))
    , m_queue(std::move(queue))
{
}

void Group::set(const MarlpostDictionary &properties)
{
    addDictionary("$set", properties);
}

void Group::setOnce(const MarlpostDictionary &properties)
{
    addDictionary("$set_once", properties);
}

void Group::unset(const std::string &property)
{
    addGroupRecordToQueueWithAction("$unset", MarlpostArray{property});
}

void Group::remove(const std::string &key, const MarlpostType &value)
{
    addDictionary("$remove", {{key, value}});
}

void Group::unionValues(const std::string &key, const MarlpostArray &values)
{
    addDictionary("$union", {{key, values}});
}

void Group::deleteGroup()
{
    addGroupRecordToQueueWithAction("$delete", MarlpostDictionary());
}

void Group::addDictionary(std::string_view action, const MarlpostDictionary &properties)
{
    if (assertPropertyTypes(properties))
        addGroupRecordToQueueWithAction(action, properties);
}

void Group::addGroupRecordToQueueWithAction(std::string_view action, MarlpostType properties)
{
    const std::shared_ptr<RecordQueue> queue = m_queue.lock();
    if (!queue)
        return;
    MarlpostDictionary entity{{"$token", m_apiToken},
                              {"$time", millisecondsOf(queue->now())},
                              {"$group_key", m_groupKey},
                              {"$group_id", m_groupID},
                              {std::string(action), std::move(properties)}};
    queue->addRecord(PersistenceType::Groups,
                     [entity = std::move(entity)](const MarlpostIdentity &, SessionMetadata &) {
                         return RecordQueue::Record{entity};
                     });
}

} // namespace quillbay
