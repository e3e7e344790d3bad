#include "analytics/MarlpostPersistence.h"

#include "analytics/ArchiveReader.h"
#include "analytics/Flush.h"
#include "analytics/JSONHandler.h"
#include "analytics/MarlpostLogger.h"
#include "foundation/PreferenceStore.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quillbay {

namespace {

constexpr const char *DistinctId = "MPDistinctID";
constexpr const char *PeopleDistinctId = "MPPeopleDistinctID";
constexpr const char *AnonymousId = "MPAnonymousId";
constexpr const char *UserId = "MPUserId";
constexpr const char *Alias = "MPAlias";
constexpr const char *HadPersistedDistinctId = "MPHadPersistedDistinctId";
constexpr const char *OptOutStatus = "OptOutStatus";
constexpr const char *SuperProperties = "superProperties";
constexpr const char *TimedEvents = "timedEvents";

double systemTime()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace

MarlpostPersistence::Places MarlpostPersistence::defaultPlaces()
{
    return {MPDB::defaultFolder(), PreferenceStore::defaultPath()};
}

MarlpostPersistence::Options MarlpostPersistence::defaultOptions()
{
    return {systemTime, builtInServerURL().empty()};
}

MarlpostPersistence::MarlpostPersistence(std::string instanceName, Places places, Options options)
    : m_name(std::move(instanceName))
    , m_places(std::move(places))
    , m_keepsUnsent(options.keepsUnsent)
    , m_database(m_name, m_places.folder, std::move(options.clock))
{
}

MarlpostPersistence::~MarlpostPersistence() = default;

bool MarlpostPersistence::saveEntity(const MarlpostDictionary &entity, PersistenceType type, bool flag)
{
    const auto json = JSONHandler::serializeJSONObject(entity);
    if (!json || !m_database.insertRow(type, *json, flag))
        return false;
    trimUnsent(type, 1);
    return true;
}

bool MarlpostPersistence::saveEntities(std::span<const MarlpostDictionary> entities, PersistenceType type,
                                       bool flag)
{
    std::vector<std::string> rows;
    rows.reserve(entities.size());
    for (const MarlpostDictionary &entity : entities) {
        if (auto json = JSONHandler::serializeJSONObject(entity))
            rows.push_back(*std::move(json));
    }
    if (!m_database.insertRows(type, rows, flag))
        return false;
    trimUnsent(type, std::int64_t(rows.size()));
    return true;
}

void MarlpostPersistence::trimUnsent(PersistenceType type, std::int64_t added)
{
    if (!m_keepsUnsent)
        return;
    auto &count = m_rowCounts[std::size_t(type)];
    count = count ? *count + added : m_database.rowCount(type);
    if (!count || *count <= RowsKeptUnsent)
        return;
    if (m_database.deleteOldestRows(type, *count - RowsKeptUnsent))
        count = RowsKeptUnsent;
    else
        count.reset();
}

StoredEntities MarlpostPersistence::loadEntitiesInBatch(PersistenceType type, std::int64_t batchSize,
                                                        bool flag, bool excludeAutomaticEvents)
{
    std::vector<std::int32_t> automatic;
    MPDB::Filter filter;
    if (type == PersistenceType::Events && excludeAutomaticEvents) {
        filter = [&](const StoredEntity &row, const JSONHandler::ObjectFacts &facts) {
            if (!facts.event.starts_with("$ae_"))
                return true;
            automatic.push_back(row.id);
            return false;
        };
    } else if (type == PersistenceType::People) {
        filter = [](const StoredEntity &, const JSONHandler::ObjectFacts &facts) {
            return facts.hasDistinctId;
        };
    }
    StoredEntities entities = m_database.readRows(type, batchSize, flag, filter);
    removeEntitiesInBatch(type, automatic);
    return entities;
}

bool MarlpostPersistence::removeEntitiesInBatch(PersistenceType type, std::span<const std::int32_t> ids)
{
    if (!ids.empty())
        m_rowCounts[std::size_t(type)].reset();
    return m_database.deleteRows(type, ids);
}

void MarlpostPersistence::identifyPeople()
{
    m_database.updateRowsFlag(PersistenceType::People, false);
}

void MarlpostPersistence::resetEntities()
{
    for (const PersistenceType type : AllPersistenceTypes)
        m_database.deleteRows(type, {}, true);
    m_rowCounts = {};
}

void MarlpostPersistence::saveOptOutStatusFlag(bool value)
{
    suite().setBoolean(key(OptOutStatus), value);
}

std::optional<bool> MarlpostPersistence::loadOptOutStatusFlag()
{
    return suite().boolean(key(OptOutStatus));
}

void MarlpostPersistence::saveSuperProperties(const MarlpostDictionary &properties)
{
    saveDictionary(SuperProperties, properties);
}

MarlpostDictionary MarlpostPersistence::loadSuperProperties()
{
    return loadDictionary(SuperProperties);
}

void MarlpostPersistence::saveTimedEvents(const MarlpostDictionary &timedEvents)
{
    saveDictionary(TimedEvents, timedEvents);
}

MarlpostDictionary MarlpostPersistence::loadTimedEvents()
{
    return loadDictionary(TimedEvents);
}

void MarlpostPersistence::saveIdentity(const MarlpostIdentity &identity)
{
    saveText(DistinctId, identity.distinctID.empty() ? std::nullopt : std::optional(identity.distinctID));
    saveText(PeopleDistinctId, identity.peopleDistinctID);
    saveText(AnonymousId, identity.anonymousId);
    saveText(UserId, identity.userId);
    saveText(Alias, identity.alias);
    if (identity.hadPersistedDistinctId)
        suite().setBoolean(key(HadPersistedDistinctId), *identity.hadPersistedDistinctId);
    else
        suite().remove(key(HadPersistedDistinctId));
}

MarlpostIdentity MarlpostPersistence::loadIdentity()
{
    return {loadText(DistinctId).value_or(std::string()),
            loadText(PeopleDistinctId),
            loadText(AnonymousId),
            loadText(UserId),
            loadText(Alias),
            suite().boolean(key(HadPersistedDistinctId))};
}

void MarlpostPersistence::deleteMPUserDefaultsData()
{
    for (const char *base : {DistinctId, PeopleDistinctId, AnonymousId, UserId, Alias, HadPersistedDistinctId,
                             OptOutStatus, SuperProperties, TimedEvents})
        suite().remove(key(base));
}

PreferenceStore &MarlpostPersistence::suite()
{
    if (!m_suite)
        m_suite = std::make_unique<PreferenceStore>(
            PreferenceStore(m_places.preferencesFile).suite(QStringLiteral("Marlpost")));
    return *m_suite;
}

QString MarlpostPersistence::key(const char *base) const
{
    return QStringLiteral("Marlpost-") + QString::fromStdString(m_name) + QLatin1Char('-') +
           QLatin1String(base);
}

void MarlpostPersistence::saveText(const char *base, const std::optional<std::string> &value)
{
    if (value)
        suite().setString(key(base), QString::fromStdString(*value));
    else
        suite().remove(key(base));
}

std::optional<std::string> MarlpostPersistence::loadText(const char *base)
{
    const auto value = suite().string(key(base));
    return value ? std::optional(value->toStdString()) : std::nullopt;
}

void MarlpostPersistence::saveDictionary(const char *base, const MarlpostDictionary &value)
{
    if (const auto json = JSONHandler::serializeJSONObject(value))
        suite().setData(key(base), QByteArray::fromStdString(*json));
}

MarlpostDictionary MarlpostPersistence::loadDictionary(const char *base)
{
    const auto json = suite().data(key(base));
    return json ? JSONHandler::deserializeData({json->constData(), std::size_t(json->size())})
                      .value_or(MarlpostDictionary())
                : MarlpostDictionary();
}

} // namespace quillbay
