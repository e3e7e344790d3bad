#include "analytics/People.h"

#include "analytics/AutomaticProperties.h"
#include "analytics/RecordQueue.h"
#include "analytics/SessionMetadata.h"
#include "analytics/Track.h"

#include <utility>

namespace quillbay {

namespace {

constexpr char transactions[] = "$transactions";

bool describesTheProfile(std::string_view action)
{
    return action == "$set" || action == "$set_once";
}

} // namespace

People::People(std::string apiToken, std::shared_ptr<const AutomaticProperties> automaticProperties,
               std::weak_ptr<RecordQueue> queue)
    : m_apiToken(std::move(apiToken))
    , m_automaticProperties(std::move(automaticProperties))
    , m_queue(std::move(queue))
{
}

void People::set(const MarlpostDictionary &properties)
{
    addDictionary("$set", properties);
}

void People::setOnce(const MarlpostDictionary &properties)
{
    addDictionary("$set_once", properties);
}

void People::unset(const std::vector<std::string> &properties)
{
    addPeopleRecordToQueueWithAction("$unset", MarlpostArray(properties.begin(), properties.end()));
}

void People::increment(const MarlpostDictionary &properties)
{
    addDictionary("$add", properties);
}

void People::append(const MarlpostDictionary &properties)
{
    addDictionary("$append", properties);
}

void People::remove(const MarlpostDictionary &properties)
{
    addDictionary("$remove", properties);
}

void People::unionValues(const MarlpostDictionary &properties)
{
    addDictionary("$union", properties);
}

void People::trackCharge(double amount, const MarlpostDictionary &properties)
{
    const std::shared_ptr<RecordQueue> queue = m_queue.lock();
    if (!queue)
        return;
    const MarlpostType::Date now{std::chrono::milliseconds(millisecondsOf(queue->now()))};
    MarlpostDictionary transaction{{"$amount", amount}, {"$time", now}};
    transaction.merge(properties);
    append({{transactions, std::move(transaction)}});
}

void People::clearCharges()
{
    set({{transactions, MarlpostArray()}});
}

void People::deleteUser()
{
    addPeopleRecordToQueueWithAction("$delete", MarlpostDictionary());
}

void People::addDictionary(std::string_view action, const MarlpostDictionary &properties)
{
    if (assertPropertyTypes(properties))
        addPeopleRecordToQueueWithAction(action, properties);
}

void People::addPeopleRecordToQueueWithAction(std::string_view action, MarlpostType properties)
{
    const std::shared_ptr<RecordQueue> queue = m_queue.lock();
    if (!queue)
        return;
    queue->addRecord(PersistenceType::People,
                     [token = m_apiToken, automatic = m_automaticProperties, action = std::string(action),
                      properties = std::move(properties), time = millisecondsOf(queue->now())](
                         const MarlpostIdentity &identity, SessionMetadata &session) {
                         MarlpostType value = properties;
                         if (describesTheProfile(action)) {
                             MarlpostDictionary all = automatic->peopleProperties();
                             all.merge(*properties.get<MarlpostDictionary>());
                             value = std::move(all);
                         }
                         MarlpostDictionary entity{
                             {"$token", token},
                             {"$time", time},
                             {action, std::move(value)},
                             {"$distinct_id", identity.peopleDistinctID.value_or(identity.distinctID)}};
                         if (identity.anonymousId)
                             entity.append("$device_id", *identity.anonymousId);
                         if (identity.userId)
                             entity.append("$user_id", *identity.userId);
                         if (identity.hadPersistedDistinctId)
                             entity.append("$had_persisted_distinct_id", *identity.hadPersistedDistinctId);
                         entity.merge(session.toDict(false));
                         return RecordQueue::Record{std::move(entity), !identity.peopleDistinctID};
                     });
}

} // namespace quillbay
