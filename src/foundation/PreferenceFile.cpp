#include "foundation/PreferenceFile.h"

#include "foundation/Database.h"
#include "foundation/FolderLock.h"
#include "foundation/JournalMerge.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <chrono>

#include <sqlite3.h>

namespace quillbay {

namespace {

Q_LOGGING_CATEGORY(logPreferences, "quillbay.preferences")

constexpr qint64 LayoutVersion = 1;
constexpr int BusyTimeout = 2000;
constexpr std::chrono::seconds LockPatience(5);
constexpr int MaxAttempts = 4;

constexpr const char *SelectSql =
    "SELECT value FROM preferences WHERE domain = ?1 AND key = ?2 AND type = ?3";
constexpr const char *UpsertSql =
    "INSERT INTO preferences(domain, key, type, value) VALUES(?1, ?2, ?3, ?4)"
    " ON CONFLICT(domain, key) DO UPDATE SET type = excluded.type, value = excluded.value";
constexpr const char *DeleteSql = "DELETE FROM preferences WHERE domain = ?1 AND key = ?2";
// Nobody knows the file yet, so its first content needs no journal on disk.
constexpr const char *LayoutSql = "PRAGMA page_size = 16384;"
                                  "PRAGMA journal_mode = MEMORY;"
                                  "BEGIN;"
                                  "CREATE TABLE preferences(domain TEXT, key TEXT, type TEXT, value BLOB,"
                                  " PRIMARY KEY(domain, key));"
                                  "PRAGMA user_version = 1;"
                                  "COMMIT;"
                                  "PRAGMA journal_mode = WAL";

// The journal keeps the room that it regularly needs: what is cut off has to be claimed from the file system
// again by the next writes. It goes when the program ends.
constexpr const char *ConnectionSql = "PRAGMA synchronous = NORMAL;"
                                      "PRAGMA journal_size_limit = 16777216";

PreferenceFile::Value valueOf(const Statement &row, int column)
{
    switch (row.type(column)) {
    case Statement::Type::Integer:
        return row.integer(column);
    case Statement::Type::Double:
        return row.real(column);
    case Statement::Type::Text:
        return row.text(column);
    case Statement::Type::Blob:
        return row.blob(column);
    case Statement::Type::Null:
        return {};
    }
    Q_UNREACHABLE();
}

struct Binder
{
    Statement &statement;
    int index;

    void operator()(std::monostate) const { statement.bindNull(index); }
    void operator()(qint64 value) const { statement.bindInteger(index, value); }
    void operator()(double value) const { statement.bindDouble(index, value); }
    void operator()(const QString &value) const { statement.bindText(index, value); }
    void operator()(const QByteArray &value) const { statement.bindBlob(index, value); }
};

} // namespace

struct PreferenceFile::Connection
{
    Database database;
    std::optional<Statement> select;
    std::optional<Statement> upsert;
    std::optional<Statement> remove;
    std::optional<Statement> dataVersion;
    std::optional<JournalMerge> merge;
    int errorCode = 0;
    QString errorText;

    bool prepare()
    {
        select.emplace(database, SelectSql);
        upsert.emplace(database, UpsertSql);
        remove.emplace(database, DeleteSql);
        dataVersion.emplace(database, "PRAGMA data_version");
        for (const auto *statement : {&select, &upsert, &remove, &dataVersion}) {
            if (!(*statement)->isPrepared())
                return noteError(**statement);
        }
        return true;
    }

    std::optional<Value> ask(const QByteArray &sql)
    {
        Statement statement(database, sql);
        if (statement.step() == Statement::Result::Row)
            return valueOf(statement, 0);
        noteError(statement);
        return {};
    }

    bool noteError(const auto &source)
    {
        errorCode = source.errorCode();
        errorText = source.errorText();
        return false;
    }

    State failed(State otherwise = State::Unusable) const
    {
        return Database::isDamage(errorCode) ? State::Damaged : otherwise;
    }

    State problem(State state, const QString &text)
    {
        errorText = text;
        return state;
    }

    State open(const DatabaseFiles &files)
    {
        if (files.isNoFile())
            return problem(State::Unusable, QStringLiteral("not a regular file"));
        if (files.isRemnant())
            return problem(State::Damaged, QStringLiteral("only a remnant"));
        if (files.isMissing())
            return State::Missing;
        if (const auto error = files.closeToOthers())
            return problem(State::Unusable, *error);
        if (!database.open(files.path(), Database::Mode::ReadWrite) ||
            !database.setJournalKeptAtClose(true) || !database.setBusyTimeout(BusyTimeout) ||
            !database.execute(ConnectionSql)) {
            noteError(database);
            return failed();
        }
        const State state = checkLayout(files);
        if (state == State::Ready && !database.setJournalKeptAtClose(false))
            return problem(State::Unusable, database.errorText());
        if (state == State::Ready)
            merge.emplace(database, files.path());
        return state;
    }

    State checkLayout(const DatabaseFiles &files)
    {
        const std::optional<Value> version = ask("PRAGMA user_version");
        const std::optional<Value> pageSize = ask("PRAGMA page_size");
        if (!version || !pageSize)
            return failed();
        if (database.hasMoved())
            return State::Missing;
        if (database.isReadOnly())
            return problem(State::Unusable, QStringLiteral("read-only"));
        if (*version == Value(qint64(0)))
            return problem(State::Damaged, QStringLiteral("another program's database"));
        if (*version != Value(LayoutVersion))
            return problem(State::Later, QStringLiteral("a later version of the program wrote it"));
        if (!prepare())
            return failed(errorCode == SQLITE_ERROR ? State::Damaged : State::Unusable);
        if (files.isLastPageCutShort(std::get<qint64>(*pageSize)))
            return problem(State::Damaged, QStringLiteral("cut short"));
        return State::Ready;
    }

    bool layOut(const QString &path)
    {
        if (database.open(path, Database::Mode::Create) && database.execute(LayoutSql))
            return true;
        return noteError(database);
    }
};

PreferenceFile::PreferenceFile(const QString &path)
    : m_givenPath(path)
    , m_files(path)
{
    attach(Suspicion::None);
}

PreferenceFile::~PreferenceFile() = default;

void PreferenceFile::attach(Suspicion suspicion)
{
    // What is about to be set aside is to stay byte for byte as it is.
    if (suspicion != Suspicion::None && !m_connection->database.setJournalKeptAtClose(true))
        report(QStringLiteral("the journal may be merged: %1").arg(m_connection->database.errorText()));
    State state = suspicion == Suspicion::None ? connect() : State::Damaged;
    if (state != State::Ready && state != State::Later)
        state = settle(suspicion);
    if (state != State::Ready)
        continueInMemory();
}

PreferenceFile::State PreferenceFile::connect()
{
    m_connection.reset();
    ++m_attachments;
    // Resolved anew: a link may have been laid or made to point elsewhere since.
    m_files = DatabaseFiles(m_givenPath);
    m_connection = std::make_unique<Connection>();
    const State state = m_connection->open(m_files);
    if (state != State::Ready)
        m_problem = m_connection->errorText;
    return state;
}

PreferenceFile::State PreferenceFile::settle(Suspicion suspicion)
{
    m_connection.reset();
    if (const auto error = m_files.makeFolder()) {
        m_problem = *error;
        return State::Unusable;
    }
    const FolderLock lock(QFileInfo(m_files.path()).path(), LockPatience);
    if (!lock.isHeld()) {
        if (m_problem.isEmpty())
            m_problem = QStringLiteral("cannot be locked");
        return State::Unusable;
    }
    State state = connect();
    if (state == State::Ready && suspicion == Suspicion::Page &&
        m_connection->ask("PRAGMA integrity_check(1)") != Value(QStringLiteral("ok")))
        state = State::Damaged;
    if (state == State::Damaged || (state == State::Ready && suspicion == Suspicion::Proven))
        state = setAside();
    return state == State::Missing ? make() : state;
}

PreferenceFile::State PreferenceFile::make()
{
    m_connection.reset();
    const DatabaseFiles fresh(m_files.path() + QStringLiteral(".new"));
    std::optional<QString> error = fresh.makeEmpty();
    if (!error) {
        Connection maker;
        if (!maker.layOut(fresh.path()))
            error = maker.errorText;
    }
    if (!error)
        error = fresh.takePlaceOf(m_files);
    if (!error)
        return connect();
    m_problem = *error;
    return State::Unusable;
}

PreferenceFile::State PreferenceFile::setAside()
{
    const bool isJournalKept =
        !m_connection->database.isOpen() || m_connection->database.setJournalKeptAtClose(true);
    m_connection.reset();
    const std::optional<QString> name = isJournalKept ? m_files.setAside() : std::nullopt;
    if (!name) {
        m_problem = QStringLiteral("damaged, and cannot be renamed");
        return State::Unusable;
    }
    report(QStringLiteral("could not be read (%1) and was set aside as %2").arg(m_problem, *name));
    return connect();
}

void PreferenceFile::continueInMemory()
{
    report(QStringLiteral("cannot be written (%1): changes last until the program ends").arg(m_problem));
    m_isInMemory = true;
    ++m_attachments;
    m_connection = std::make_unique<Connection>();
    Connection &c = *m_connection;
    if (!c.layOut(QStringLiteral(":memory:")) || !c.prepare()) {
        report(c.errorText);
        return;
    }
    copyToMemory();
}

void PreferenceFile::copyToMemory()
{
    // A read-only folder has no room for the journal's index, without which only an immutable file is read.
    for (const Database::Mode mode : {Database::Mode::ReadOnly, Database::Mode::Immutable}) {
        Database source;
        if (!source.open(m_files.path(), mode))
            continue;
        Statement rows(source, "SELECT domain, key, type, value FROM preferences");
        Statement &copy = *m_connection->upsert;
        Statement::Result result = rows.step();
        for (; result == Statement::Result::Row; result = rows.step()) {
            copy.bindText(1, rows.text(0)).bindText(2, rows.text(1)).bindText(3, rows.text(2));
            std::visit(Binder{copy, 4}, valueOf(rows, 3));
            if (copy.step() != Statement::Result::Done)
                report(copy.errorText());
            copy.reset();
        }
        if (result == Statement::Result::Done)
            return;
    }
}

Statement::Result PreferenceFile::run(std::optional<Statement> Connection::*statement, const Use &bind,
                                      const Use &onRow)
{
    Suspicion suspicion = Suspicion::None;
    for (int attempt = 1;; ++attempt) {
        std::optional<Statement> &prepared = (*m_connection).*statement;
        if (!prepared)
            return Statement::Result::Error;
        bind(*prepared);
        const Statement::Result result = prepared->step();
        if (result == Statement::Result::Row && onRow)
            onRow(*prepared);
        const int code = prepared->errorCode();
        const QString text = prepared->errorText();
        const bool isReset = prepared->reset() || result == Statement::Result::Error;

        const bool isDamaged = Database::isDamage(code);
        if (!m_isInMemory && attempt < MaxAttempts && (isDamaged || m_connection->database.hasMoved())) {
            m_problem = text;
            if (isDamaged)
                suspicion = suspicion == Suspicion::None ? Suspicion::Page : Suspicion::Proven;
            attach(isDamaged ? suspicion : Suspicion::None);
            continue;
        }
        if (result == Statement::Result::Error)
            report(text);
        return isReset ? result : Statement::Result::Error;
    }
}

std::optional<PreferenceFile::Stamp> PreferenceFile::stamp()
{
    std::optional<qint64> version;
    run(
        &Connection::dataVersion, [](Statement &) {}, [&](Statement &row) { version = row.integer(0); });
    return version ? std::optional(Stamp{m_attachments, *version}) : std::nullopt;
}

PreferenceFile::Value PreferenceFile::read(const QString &domain, const QString &key, QLatin1StringView type)
{
    Value value;
    const auto bind = [&](Statement &statement) {
        value = {};
        statement.bindText(1, domain).bindText(2, key).bindText(3, QString(type));
    };
    run(&Connection::select, bind, [&](Statement &row) { value = valueOf(row, 0); });
    return value;
}

std::optional<QByteArray> PreferenceFile::readText(const QString &domain, const QString &key,
                                                   QLatin1StringView type, const QByteArray &known)
{
    std::optional<QByteArray> text;
    const auto bind = [&](Statement &statement) {
        text.reset();
        statement.bindText(1, domain).bindText(2, key).bindText(3, QString(type));
    };
    run(&Connection::select, bind, [&](Statement &row) {
        if (row.type(0) != Statement::Type::Text)
            return;
        const QByteArrayView found = row.utf8(0);
        text = found == known ? known : found.toByteArray();
    });
    return text;
}

bool PreferenceFile::write(const QString &domain, const QString &key, QLatin1StringView type,
                           const Value &value)
{
    const auto bind = [&](Statement &statement) {
        statement.bindText(1, domain).bindText(2, key).bindText(3, QString(type));
        std::visit(Binder{statement, 4}, value);
    };
    const bool isDone = run(&Connection::upsert, bind, {}) == Statement::Result::Done;
    if (m_connection->merge)
        m_connection->merge->afterWrite();
    return isDone && !m_isInMemory;
}

bool PreferenceFile::remove(const QString &domain, const QString &key)
{
    const auto bind = [&](Statement &statement) { statement.bindText(1, domain).bindText(2, key); };
    return run(&Connection::remove, bind, {}) == Statement::Result::Done && !m_isInMemory;
}

void PreferenceFile::report(const QString &what)
{
    if (what == m_reported)
        return;
    m_reported = what;
    qCWarning(logPreferences).noquote() << "The preferences in" << m_files.path() << what;
}

} // namespace quillbay
