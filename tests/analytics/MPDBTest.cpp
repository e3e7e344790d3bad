#include "analytics/MPDB.h"

#include "analytics/LogRecord.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <gmock/gmock.h>
#include <sys/resource.h>

namespace quillbay {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto Events = PersistenceType::Events;
constexpr auto People = PersistenceType::People;

/// Keeps this process from making a file longer than so many bytes, as a full disk would.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_previous);
        const rlimit limit = {bytes, m_previous.rlim_max};
        m_isSet = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;
    bool isSet() const { return m_isSet; }

private:
    rlimit m_previous = {};
    void (*m_handler)(int) = nullptr;
    bool m_isSet = false;
};

class MPDBTest : public ::testing::Test
{
protected:
    MPDBTest()
        : folder(home.path(QStringLiteral(".cache/quillbay")))
        , store("to-ken é9", folder, [this] { return ++time; })
    {
    }

    std::vector<std::string> textsOf(PersistenceType type, std::int64_t rows = MPDB::AllRows,
                                     bool flag = false)
    {
        std::vector<std::string> texts;
        for (const StoredEntity &row : store.readRows(type, rows, flag))
            texts.push_back(row.json);
        return texts;
    }

    /// By a connection of its own, as another program would.
    std::vector<std::string> query(const QByteArray &sql)
    {
        Database database;
        EXPECT_TRUE(database.open(store.path(), Database::Mode::ReadWrite));
        Statement statement(database, sql);
        std::vector<std::string> values;
        Statement::Result result;
        while ((result = statement.step()) == Statement::Result::Row)
            values.push_back(statement.text(0).toStdString());
        EXPECT_EQ(result, Statement::Result::Done) << statement.errorText().toStdString();
        return values;
    }

    void overwrite(qint64 at, const QByteArray &bytes)
    {
        QFile file(store.path());
        ASSERT_TRUE(file.open(QFile::ReadWrite));
        ASSERT_TRUE(file.seek(at));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    testing::TestHome home;
    testing::LogRecord log;
    QString folder;
    double time = 1000;
    MPDB store;
};

TEST_F(MPDBTest, FileAndTablesAreAsOthersReadThem)
{
    ASSERT_TRUE(store.insertRow(People, R"({"a":1})", true));
    EXPECT_EQ(store.path(), folder + QStringLiteral("/tokené9_MPDB.sqlite"));
    EXPECT_EQ(query("PRAGMA journal_mode"), std::vector<std::string>{"wal"});
    EXPECT_THAT(
        query("SELECT sql FROM sqlite_master WHERE name LIKE '%people%' ORDER BY type DESC"),
        ElementsAre("CREATE TABLE marlpost_tokené9_people(id integer primary key autoincrement,data blob,"
                    "time real,flag integer)",
                    "CREATE INDEX idx_marlpost_tokené9_people_time ON marlpost_tokené9_people (time)"));
    EXPECT_THAT(
        query("SELECT typeof(data) || ' ' || data || ' ' || typeof(time) || ' ' || time || ' ' || flag "
              "FROM marlpost_tokené9_people"),
        ElementsAre(R"(blob {"a":1} real 1001.0 1)"));
    EXPECT_EQ(QFileInfo(store.path()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(MPDBTest, OldestRowsComeFirst)
{
    for (const double at : {30.0, 10.0, 20.0}) {
        time = at;
        ASSERT_TRUE(store.insertRow(Events, "{\"t\":" + std::to_string(int(at)) + '}'));
    }
    EXPECT_THAT(textsOf(Events), ElementsAre(R"({"t":10})", R"({"t":20})", R"({"t":30})"));
    const StoredEntities two = store.readRows(Events, 2);
    ASSERT_THAT(two, SizeIs(2));
    const std::int32_t ids[] = {two[0].id, two[1].id};
    EXPECT_TRUE(store.deleteRows(Events, ids));
    EXPECT_THAT(textsOf(Events), ElementsAre(R"({"t":30})"));
}

TEST_F(MPDBTest, NothingIsDeletedWithoutIds)
{
    store.insertRow(Events, "{}");
    store.insertRow(People, "{}");
    EXPECT_TRUE(store.deleteRows(Events, {}));
    EXPECT_THAT(textsOf(Events), SizeIs(1));
    EXPECT_TRUE(store.deleteRows(Events, {}, true));
    EXPECT_THAT(textsOf(Events), IsEmpty());
    EXPECT_THAT(textsOf(People), SizeIs(1));
}

TEST_F(MPDBTest, FlagMovesAllRowsOfAKind)
{
    store.insertRow(People, R"({"held":1})", true);
    store.insertRow(People, R"({"held":2})", true);
    store.insertRow(Events, "{}", true);
    EXPECT_THAT(textsOf(People), IsEmpty());
    EXPECT_TRUE(store.updateRowsFlag(People, false));
    EXPECT_THAT(textsOf(People), SizeIs(2));
    EXPECT_THAT(textsOf(People, MPDB::AllRows, true), IsEmpty());
    EXPECT_THAT(textsOf(Events, MPDB::AllRows, true), SizeIs(1));
    EXPECT_TRUE(store.updateRowsFlag(People, true));
    EXPECT_THAT(textsOf(People), IsEmpty());
}

TEST_F(MPDBTest, UnreadableRowsStayAndBlockNothing)
{
    store.open();
    for (int i = 0; i < 60; ++i)
        ASSERT_TRUE(store.insertRow(Events, i % 2 ? "{\"cut" : "[1]"));
    query("INSERT INTO marlpost_tokené9_events (data, flag, time) VALUES (NULL, 0, 1)");
    for (int i = 0; i < 80; ++i)
        ASSERT_TRUE(store.insertRow(Events, "{\"good\":" + std::to_string(i) + '}'));
    const auto rows = textsOf(Events, 50);
    ASSERT_THAT(rows, SizeIs(50));
    EXPECT_EQ(rows.front(), R"({"good":0})");
    EXPECT_EQ(rows.back(), R"({"good":49})");
    EXPECT_GT(log.count("No blob found in data column for row in marlpost_tokené9_events"), 0);
    EXPECT_EQ(query("SELECT COUNT(*) FROM marlpost_tokené9_events"), std::vector<std::string>{"141"});
}

TEST_F(MPDBTest, OwnIdOfAnEntityGivesWayToTheRows)
{
    store.insertRow(Events, R"({"id":"mine","a":1})");
    EXPECT_THAT(textsOf(Events), ElementsAre(R"({"a":1})"));
}

TEST_F(MPDBTest, OldestRowsGoWhateverTheirFlag)
{
    store.insertRow(Events, R"({"n":1})");
    store.insertRow(Events, R"({"n":2})", true);
    store.insertRow(Events, R"({"n":3})");
    EXPECT_TRUE(store.deleteOldestRows(Events, 2));
    EXPECT_EQ(store.rowCount(Events), 1);
    EXPECT_THAT(textsOf(Events), ElementsAre(R"({"n":3})"));
}

TEST_F(MPDBTest, NameWithoutALetterOpensNothing)
{
    MPDB nameless("-!-", folder, [] { return 0.0; });
    EXPECT_FALSE(nameless.insertRow(Events, "{}"));
    EXPECT_THAT(nameless.readRows(Events), IsEmpty());
    EXPECT_GT(log.count("Project token must not be empty. Database cannot be opened."), 0);
    EXPECT_FALSE(QFileInfo::exists(nameless.path()));
}

TEST_F(MPDBTest, ConnectsOnceForEachCallUntilItCan)
{
    home.write(QStringLiteral(".cache/quillbay"), "a file where the folder belongs");
    EXPECT_FALSE(store.insertRow(Events, "{}"));
    EXPECT_EQ(log.count("No database connection found. Calling MPDB.open()"), 1);
    EXPECT_EQ(log.count("Error opening or creating database at path: "), 1);
    EXPECT_THAT(store.readRows(Events), IsEmpty());
    EXPECT_EQ(log.count("No database connection found. Calling MPDB.open()"), 2);
    ASSERT_TRUE(QFile::remove(folder));
    EXPECT_TRUE(store.insertRow(Events, "{}"));
    EXPECT_THAT(textsOf(Events), SizeIs(1));
}

TEST_F(MPDBTest, RemovedFileIsLetGo)
{
    ASSERT_TRUE(store.insertRow(Events, R"({"n":1})"));
    ASSERT_TRUE(QDir(folder).removeRecursively());
    EXPECT_TRUE(store.insertRow(Events, R"({"n":2})"));
    EXPECT_EQ(query("SELECT data FROM marlpost_tokené9_events"), std::vector<std::string>{R"({"n":2})"});
}

TEST_F(MPDBTest, RecreateStartsAnew)
{
    store.insertRow(Events, "{}");
    store.recreate();
    EXPECT_TRUE(store.isOpen());
    EXPECT_THAT(textsOf(Events), IsEmpty());
    EXPECT_EQ(log.count("Deleted database file at path: "), 1);
}

TEST_F(MPDBTest, FullDiskCostsTheNewRowAlone)
{
    const std::string large = "{\"a\":\"" + std::string(100'000, 'x') + "\"}";
    ASSERT_TRUE(store.insertRow(Events, large));
    {
        const FileSizeLimit limit(300'000);
        ASSERT_TRUE(limit.isSet());
        bool isStored = true;
        for (int i = 0; isStored && i < 10; ++i)
            isStored = store.insertRow(Events, large);
        EXPECT_FALSE(isStored);
        const std::string many[] = {"{}", large, large, large};
        EXPECT_FALSE(store.insertRows(People, many));
        EXPECT_GT(log.count("Failed to insert row into table marlpost_tokené9_events: "), 0);
        EXPECT_FALSE(textsOf(Events).empty());
    }
    EXPECT_THAT(textsOf(People), IsEmpty()) << "half a transaction was kept";
    EXPECT_TRUE(store.insertRow(Events, R"({"after":1})"));
    EXPECT_EQ(textsOf(Events).back(), R"({"after":1})");
}

TEST_F(MPDBTest, ReadOnlyDatabaseIsReadAndLeftAsItIs)
{
    ASSERT_TRUE(store.insertRow(Events, R"({"n":1})"));
    store.close();
    EXPECT_EQ(query("PRAGMA journal_mode=DELETE"), std::vector<std::string>{"delete"});
    overwrite(18, "\x03"); // a later version of the format for writers, which this one must only read
    EXPECT_FALSE(store.insertRow(Events, R"({"n":2})"));
    EXPECT_GT(log.count("Failed to insert row into table marlpost_tokené9_events: "), 0);
    EXPECT_THAT(textsOf(Events), ElementsAre(R"({"n":1})"));
    const std::int32_t ids[] = {1};
    EXPECT_FALSE(store.deleteRows(Events, ids));
}

TEST_F(MPDBTest, DamagedDatabaseIsReportedAndLeftAsItIs)
{
    ASSERT_TRUE(store.insertRow(Events, "{}"));
    store.close();
    overwrite(0, QByteArray(200, 'x'));
    const QByteArray before = [&] {
        QFile file(store.path());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }();
    EXPECT_FALSE(store.insertRow(Events, "{}"));
    EXPECT_THAT(store.readRows(Events), IsEmpty());
    EXPECT_FALSE(store.updateRowsFlag(Events, true));
    EXPECT_FALSE(store.rowCount(Events));
    EXPECT_EQ(log.count("INSERT statement for table marlpost_tokené9_events could not be prepared"), 1);
    EXPECT_GT(log.count("CREATE statement for table marlpost_tokené9_events could not be prepared"), 0);
    QFile file(store.path());
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

} // namespace

} // namespace quillbay
