#include "analytics/MPDB.h"

#include "analytics/MarlpostLogger.h"
#include "foundation/DatabaseFiles.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace quillbay {

namespace {

/// The process that may hold a lock is another start of the program, for a moment.
constexpr int BusyTimeout = 2000; // milliseconds

std::string lettersMarksAndDigits(std::string_view name)
{
    QString kept;
    for (const char32_t character : QString::fromUtf8(name.data(), qsizetype(name.size())).toUcs4()) {
        if (QChar::isLetterOrNumber(character) || QChar::isMark(character))
            kept += QChar::fromUcs4(character);
    }
    return kept.toStdString();
}

QByteArray unowned(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), qsizetype(text.size()));
}

std::string text(const QString &string)
{
    return string.toStdString();
}

std::string idList(std::span<const std::int32_t> ids)
{
    std::string list;
    for (const std::int32_t id : ids)
        list.append(list.empty() ? "(" : ",").append(std::to_string(id));
    return list + ')';
}

std::string withoutId(const std::string &json)
{
    auto object = JSONHandler::deserializeData(json);
    return object && object->remove("id") ? JSONHandler::serializeJSONObject(*object).value_or(json) : json;
}

} // namespace

MPDB::MPDB(std::string_view name, const QString &folder, Clock clock)
    : m_name(lettersMarksAndDigits(name))
    , m_clock(std::move(clock))
{
    m_path = folder + QLatin1Char('/') + QString::fromStdString(m_name) + QStringLiteral("_MPDB.sqlite");
}

QString MPDB::defaultFolder()
{
    const QString set = qEnvironmentVariable("XDG_CACHE_HOME");
    const QString base = QDir::isAbsolutePath(set) ? set : QDir::homePath() + QStringLiteral("/.cache");
    return base + QStringLiteral("/quillbay");
}

std::string MPDB::tableName(PersistenceType type) const
{
    return "marlpost_" + m_name + '_' + std::string(rawValue(type));
}

void MPDB::open()
{
    if (m_name.empty()) {
        MarlpostLogger::error("Project token must not be empty. Database cannot be opened.");
        return;
    }
    const DatabaseFiles files(m_path);
    if (const auto error = files.makeFolder())
        MarlpostLogger::error(text(*error));
    if (!m_database.open(m_path, Database::Mode::Create)) {
        const QString error = m_database.errorText();
        logSqlError("Error opening or creating database at path: " + text(m_path), error);
        close();
        return;
    }
    MarlpostLogger::info("Successfully opened connection to database at path: ", text(m_path));
    if (const auto error = files.closeToOthers())
        MarlpostLogger::error(text(*error));
    if (!m_database.setBusyTimeout(BusyTimeout))
        logSqlError("Failed to set the busy timeout", m_database.errorText());
    enableJournal();
    for (const PersistenceType type : AllPersistenceTypes)
        createTable(type);
}

void MPDB::enableJournal()
{
    Statement statement(m_database, "PRAGMA journal_mode=WAL;");
    if (!statement.isPrepared())
        logSqlError("PRAGMA journal_mode=WAL statement could not be prepared", statement.errorText());
    else if (statement.step() == Statement::Result::Row)
        MarlpostLogger::info("SQLite journal mode set to ", text(statement.text(0)));
    else
        logSqlError("Failed to enable journal_mode=WAL", statement.errorText());
    // With this journal a commit survives the end of the process either way, and the file that of the
    // machine; waiting for the disk at each event would buy its last few events.
    if (!m_database.execute("PRAGMA synchronous=NORMAL;"))
        logSqlError("Failed to set synchronous=NORMAL", m_database.errorText());
}

void MPDB::createTable(PersistenceType type)
{
    const std::string table = tableName(type);
    const std::string index = "idx_" + table + "_time";
    const std::pair<std::string, std::string> steps[] = {
        {"table " + table, "CREATE TABLE IF NOT EXISTS " + table +
                               "(id integer primary key autoincrement,data blob,time real,flag integer);"},
        {"index " + index, "CREATE INDEX IF NOT EXISTS " + index + " ON " + table + " (time);"}};
    for (const auto &[name, sql] : steps) {
        Statement statement(m_database, unowned(sql));
        if (!statement.isPrepared())
            logSqlError("CREATE statement for " + name + " could not be prepared", statement.errorText());
        else if (statement.step() != Statement::Result::Done)
            logSqlError("Failed to create " + name, statement.errorText());
    }
}

void MPDB::close()
{
    m_inserts = {};
    m_database.close();
    MarlpostLogger::info("Connection to database closed.");
}

void MPDB::reconnect()
{
    MarlpostLogger::warning("No database connection found. Calling MPDB.open()");
    open();
}

void MPDB::recreate()
{
    close();
    for (const char *suffix : {"", "-wal", "-shm", "-journal"}) {
        QFile file(m_path + QLatin1String(suffix));
        if (!file.exists())
            continue;
        if (file.remove())
            MarlpostLogger::info("Deleted database file at path: ", text(file.fileName()));
        else
            MarlpostLogger::error("Unable to remove database file at path: ", text(file.fileName()),
                                  ", error: ", text(file.errorString()));
    }
    reconnect();
}

bool MPDB::isConnected()
{
    // Caches are cleared while programs run: what is written to a removed file nobody will read.
    if (m_database.isOpen() && m_database.hasMoved())
        close();
    if (!m_database.isOpen())
        reconnect();
    return m_database.isOpen();
}

bool MPDB::insert(PersistenceType type, std::string_view data, bool flag)
{
    auto &statement = m_inserts[std::size_t(type)];
    const std::string table = tableName(type);
    if (!statement)
        statement.emplace(m_database,
                          unowned("INSERT INTO " + table + " (data, flag, time) VALUES(?, ?, ?);"));
    if (!statement->isPrepared()) {
        logSqlError("INSERT statement for table " + table + " could not be prepared", statement->errorText());
        statement.reset();
        return false;
    }
    statement->bindBlob(1, unowned(data)).bindInteger(2, flag ? 1 : 0).bindDouble(3, m_clock());
    const bool isDone = statement->step() == Statement::Result::Done;
    if (isDone)
        MarlpostLogger::info("Successfully inserted row into table ", table);
    else
        logSqlError("Failed to insert row into table " + table, statement->errorText());
    // After a failure the reset repeats its code.
    return statement->reset() && isDone;
}

bool MPDB::insertRow(PersistenceType type, std::string_view data, bool flag)
{
    return isConnected() && insert(type, data, flag);
}

bool MPDB::insertRows(PersistenceType type, std::span<const std::string> data, bool flag)
{
    if (!isConnected())
        return false;
    if (!m_database.execute("BEGIN IMMEDIATE;")) {
        logSqlError("Failed to begin a transaction", m_database.errorText());
        return false;
    }
    bool isDone = true;
    for (std::size_t i = 0; isDone && i < data.size(); ++i)
        isDone = insert(type, data[i], flag);
    if (isDone && m_database.execute("COMMIT;"))
        return true;
    if (isDone)
        logSqlError("Failed to commit a transaction", m_database.errorText());
    // Some errors have rolled it back already.
    if (!m_database.execute("ROLLBACK;"))
        logSqlError("Failed to roll back a transaction", m_database.errorText());
    return false;
}

StoredEntities MPDB::readRows(PersistenceType type, std::int64_t numRows, bool flag, const Filter &isWanted)
{
    StoredEntities rows;
    if (!isConnected())
        return rows;
    const std::string table = tableName(type);
    const std::string sql =
        "SELECT id, data FROM " + table + " WHERE flag = " + (flag ? "1" : "0") + " ORDER BY time";
    std::int64_t seen = 0;
    const auto run = [&](const std::string &limited) {
        Statement statement(m_database, unowned(limited));
        if (!statement.isPrepared()) {
            logSqlError("SELECT statement for table " + table + " could not be prepared",
                        statement.errorText());
            return;
        }
        auto result = Statement::Result::Done;
        while (std::int64_t(rows.size()) < numRows && (result = statement.step()) == Statement::Result::Row) {
            ++seen;
            StoredEntity row{std::int32_t(statement.integer(0)), {}};
            const QByteArrayView data = statement.utf8(1);
            if (data.isNull()) {
                MarlpostLogger::error("No blob found in data column for row in ", table);
                continue;
            }
            row.json.assign(data.data(), std::size_t(data.size()));
            const auto facts = JSONHandler::readFacts(row.json);
            if (!facts || (isWanted && !isWanted(row, *facts)))
                continue;
            if (facts->hasId)
                row.json = withoutId(row.json);
            rows.push_back(std::move(row));
        }
        if (result == Statement::Result::Error)
            logSqlError("Failed to read table " + table, statement.errorText());
    };
    if (numRows == AllRows) {
        run(sql);
    } else {
        run(sql + " LIMIT " + std::to_string(numRows));
        // Rows that were passed over must not stand in the way of those behind them.
        if (std::int64_t(rows.size()) < numRows && seen >= numRows) {
            rows.clear();
            run(sql);
        }
    }
    MarlpostLogger::info("Successfully read ", rows.size(), " from table ", table);
    return rows;
}

bool MPDB::deleteRows(PersistenceType type, std::span<const std::int32_t> ids, bool isDeleteAll)
{
    if (ids.empty() && !isDeleteAll)
        return true;
    return execute("DELETE FROM " + tableName(type) + (isDeleteAll ? "" : " WHERE id IN " + idList(ids)),
                   "delete rows from", type);
}

bool MPDB::updateRowsFlag(PersistenceType type, bool newFlag)
{
    return execute("UPDATE " + tableName(type) + " SET flag = " + (newFlag ? "true" : "false") +
                       " where flag = " + (newFlag ? "false" : "true"),
                   "update rows of", type);
}

bool MPDB::deleteOldestRows(PersistenceType type, std::int64_t count)
{
    const std::string table = tableName(type);
    return execute("DELETE FROM " + table + " WHERE id IN (SELECT id FROM " + table +
                       " ORDER BY time LIMIT " + std::to_string(count) + ")",
                   "delete rows from", type);
}

std::optional<std::int64_t> MPDB::rowCount(PersistenceType type)
{
    if (!isConnected())
        return {};
    Statement statement(m_database, unowned("SELECT COUNT(*) FROM " + tableName(type)));
    if (statement.step() == Statement::Result::Row)
        return statement.integer(0);
    logSqlError("Failed to count the rows of table " + tableName(type), statement.errorText());
    return {};
}

bool MPDB::execute(const std::string &sql, std::string_view verb, PersistenceType type)
{
    if (!isConnected())
        return false;
    if (m_database.execute(QByteArray::fromStdString(sql)))
        return true;
    logSqlError("Failed to " + std::string(verb) + " table " + tableName(type), m_database.errorText());
    return false;
}

void MPDB::logSqlError(std::string_view message, const QString &error) const
{
    MarlpostLogger::error(message, ": ", text(error));
}

} // namespace quillbay
