#pragma once

#include "analytics/JSONHandler.h"
#include "analytics/StoredEntity.h"
#include "foundation/Database.h"
#include "foundation/Statement.h"

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillbay {

/// The event database of one client instance: a SQLite file NAME_MPDB.sqlite (write-ahead journal) with a
/// table marlpost_NAME_KIND for each kind, where NAME is what letters, marks and digits the given name has:
///
///   id integer primary key autoincrement | data blob | time real | flag integer
///
/// with the entity's JSON, the seconds since 1970 at the insert, and 1 for a people row that is held back
/// until the user is identified. A row is committed when `insertRow` returns, and survives the sudden end of
/// the process.
///
/// Nothing here throws or ends the program: a failure is logged, and answered by false or an empty result.
/// A call without a connection tries to open one, once.
/// Thread: the instance's tracking queue, for everything but the constructor. The connection is not shared.
class MPDB
{
public:
    using Clock = std::function<double()>; ///< Seconds since 1970.

    static constexpr std::int64_t AllRows = std::numeric_limits<std::int64_t>::max();

    /// Opens nothing yet. `folder` is made when needed, for the owner alone.
    MPDB(std::string_view name, const QString &folder, Clock clock);

    /// $XDG_CACHE_HOME/quillbay; default ~/.cache/quillbay.
    static QString defaultFolder();

    const QString &path() const { return m_path; }
    std::string tableName(PersistenceType type) const;
    bool isOpen() const { return m_database.isOpen(); }

    void open();
    void close();
    void reconnect();
    /// Starts with an empty file.
    void recreate();

    /// `data` is the JSON text of the entity.
    bool insertRow(PersistenceType type, std::string_view data, bool flag = false);
    /// All of them or none.
    bool insertRows(PersistenceType type, std::span<const std::string> data, bool flag = false);
    using Filter = std::function<bool(const StoredEntity &row, const JSONHandler::ObjectFacts &facts)>;
    /// The oldest rows with that flag, oldest first. A row without data, or whose data is not one JSON
    /// object, is left out and stays in the table, as does one that `isWanted` refuses. These do not count
    /// towards `numRows`: fifty of them would otherwise block all others for ever.
    StoredEntities readRows(PersistenceType type, std::int64_t numRows = AllRows, bool flag = false,
                            const Filter &isWanted = {});
    /// With neither ids nor `isDeleteAll` nothing happens.
    bool deleteRows(PersistenceType type, std::span<const std::int32_t> ids, bool isDeleteAll = false);
    /// Gives every row of the other flag this one.
    bool updateRowsFlag(PersistenceType type, bool newFlag);
    /// Deletes so many of the oldest rows, whatever their flag.
    bool deleteOldestRows(PersistenceType type, std::int64_t count);
    /// Nothing where they cannot be counted.
    std::optional<std::int64_t> rowCount(PersistenceType type);

private:
    bool isConnected();
    void enableJournal();
    void createTable(PersistenceType type);
    bool execute(const std::string &sql, std::string_view verb, PersistenceType type);
    bool insert(PersistenceType type, std::string_view data, bool flag);
    void logSqlError(std::string_view message, const QString &error) const;

    QString m_path;
    std::string m_name;
    Clock m_clock;
    Database m_database;
    std::array<std::optional<Statement>, AllPersistenceTypes.size()> m_inserts; ///< Of `m_database`.
};

} // namespace quillbay
