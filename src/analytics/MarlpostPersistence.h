#pragma once

#include "analytics/MPDB.h"
#include "analytics/MarlpostType.h"
#include "analytics/StoredEntity.h"

#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillbay {

class PreferenceStore;

/// Who events are attributed to, as it is kept over restarts. Texts are UTF-8.
struct MarlpostIdentity
{
    std::string distinctID;
    std::optional<std::string> peopleDistinctID;
    std::optional<std::string> anonymousId;
    std::optional<std::string> userId;
    std::optional<std::string> alias;
    std::optional<bool> hadPersistedDistinctId;

    bool operator==(const MarlpostIdentity &) const = default;
};

/// What one client instance keeps: its entities in an `MPDB`, its small values in the preferences' suite
/// "Marlpost", each under the key "Marlpost-NAME-BASE", where BASE is "MPDistinctID", "MPPeopleDistinctID",
/// "MPAnonymousId", "MPUserId", "MPAlias" (strings), "MPHadPersistedDistinctId", "OptOutStatus" (booleans),
/// "superProperties", "timedEvents" (data: the text of a JSON object).
///
/// Nothing fails towards the caller: what cannot be kept is logged, what cannot be read is empty.
/// Thread: the instance's tracking queue for everything, the destructor too; the constructor alone may run
/// elsewhere, touches no file and is cheap. (The preferences are opened by the first call that needs them,
/// as a connection of this thread's own.)
class MarlpostPersistence
{
public:
    struct Places
    {
        QString folder;          ///< Of the database and the earlier archive files; made when needed.
        QString preferencesFile; ///< The path of the preferences.
    };
    struct Options
    {
        MPDB::Clock clock; ///< Seconds since 1970.
        /// Whether nothing will ever be sent: then the newest `RowsKeptUnsent` of a kind are kept and no
        /// more.
        bool keepsUnsent = false;
    };

    static constexpr std::int64_t RowsKeptUnsent = 10'000;

    /// Where the program keeps them.
    static Places defaultPlaces();
    /// The system's clock, and whether this build has a service to send to.
    static Options defaultOptions();

    explicit MarlpostPersistence(std::string instanceName, Places places = defaultPlaces(),
                                 Options options = defaultOptions());
    ~MarlpostPersistence();
    MarlpostPersistence(const MarlpostPersistence &) = delete;
    MarlpostPersistence &operator=(const MarlpostPersistence &) = delete;

    /// Whether an archive file of an earlier version is there.
    bool needMigration() const;
    /// Takes over the archive files "marlpost-NAME-KIND" of the folder: property lists, XML or binary, with
    /// KIND and outermost value
    ///   events, people, groups   an array of dictionaries, one an entity
    ///   properties               a dictionary with "superProperties", "timedEvents" (dictionaries),
    ///                            "distinctId", "anonymousId", "userId", "alias", "peopleDistinctId"
    ///                            (strings), "hadPersistedDistinctId" (boolean) and
    ///                            "peopleUnidentifiedQueue" (an array of dictionaries: held-back people rows)
    ///   optOutStatus             a boolean
    /// Each file is deleted once what it held is stored, not before: a process that ends in between takes it
    /// over twice. One that is no such list is renamed, with ".unreadable" at the end.
    void migrate();

    bool saveEntity(const MarlpostDictionary &entity, PersistenceType type, bool flag = false);
    /// All of them or none.
    bool saveEntities(std::span<const MarlpostDictionary> entities, PersistenceType type, bool flag = false);
    /// The oldest entities with that flag. Rows without a JSON object stay and are passed over, as are people
    /// rows without a "$distinct_id". Excluded automatic events ("event" begins with "$ae_") are deleted.
    StoredEntities loadEntitiesInBatch(PersistenceType type, std::int64_t batchSize = MPDB::AllRows,
                                       bool flag = false, bool excludeAutomaticEvents = false);
    bool removeEntitiesInBatch(PersistenceType type, std::span<const std::int32_t> ids);
    /// Makes the held-back people rows sendable.
    void identifyPeople();
    /// Deletes the entities of all kinds.
    void resetEntities();

    void saveOptOutStatusFlag(bool value);
    std::optional<bool> loadOptOutStatusFlag();
    void saveSuperProperties(const MarlpostDictionary &properties);
    MarlpostDictionary loadSuperProperties();
    /// Event name to start time, seconds since 1970.
    void saveTimedEvents(const MarlpostDictionary &timedEvents);
    MarlpostDictionary loadTimedEvents();
    /// What the identity lacks is removed.
    void saveIdentity(const MarlpostIdentity &identity);
    MarlpostIdentity loadIdentity();
    /// Removes every key of the table above.
    void deleteMPUserDefaultsData();

private:
    PreferenceStore &suite();
    QString key(const char *base) const;
    QString archivePath(std::string_view kind) const;
    enum class Takeover { Done, Failed, Unreadable };
    Takeover takeOver(std::string_view kind, const MarlpostType &archive);
    Takeover takeOverQueue(PersistenceType type, const MarlpostArray &archive, bool flag);
    Takeover takeOverProperties(const MarlpostDictionary &archive);
    void trimUnsent(PersistenceType type, std::int64_t added);
    void saveText(const char *base, const std::optional<std::string> &value);
    std::optional<std::string> loadText(const char *base);
    void saveDictionary(const char *base, const MarlpostDictionary &value);
    MarlpostDictionary loadDictionary(const char *base);

    std::string m_name;
    Places m_places;
    bool m_keepsUnsent;
    MPDB m_database;
    /// How many rows of a kind there are, where that is known; asked for only in a build that sends nothing.
    std::array<std::optional<std::int64_t>, AllPersistenceTypes.size()> m_rowCounts;
    std::unique_ptr<PreferenceStore> m_suite;
};

} // namespace quillbay
