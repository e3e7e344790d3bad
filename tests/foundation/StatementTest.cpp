#include "foundation/Statement.h"

#include "foundation/Database.h"
#include "support/TestHome.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

namespace quillbay {

using Result = Statement::Result;

class StatementTest : public ::testing::Test
{
protected:
    StatementTest()
    {
        EXPECT_TRUE(m_database.open(QStringLiteral(":memory:"), Database::Mode::Create));
        EXPECT_TRUE(m_database.execute("CREATE TABLE t(id INTEGER PRIMARY KEY, value)"));
    }

    Database m_database;
};

TEST_F(StatementTest, ValuesComeBackAsTheyWentIn)
{
    const QString text = QString::fromUtf8("it's %_ \xF0\x9F\x98\x80") + QChar(0) + QStringLiteral("after");
    const QByteArray blob("\0\xff\0", 3);
    Statement insert(m_database, "INSERT INTO t VALUES(?1, ?2)");
    const auto put = [&](int id, auto &&bind) {
        bind(insert.bindInteger(1, id));
        EXPECT_EQ(insert.step(), Result::Done);
        EXPECT_TRUE(insert.reset());
    };
    put(0, [&](Statement &s) { s.bindText(2, text); });
    put(1, [&](Statement &s) { s.bindBlob(2, blob); });
    put(2, [&](Statement &s) { s.bindInteger(2, std::numeric_limits<qint64>::min()); });
    put(3, [&](Statement &s) { s.bindDouble(2, -INFINITY); });
    put(4, [&](Statement &s) { s.bindText(2, QString()); });
    put(5, [&](Statement &s) { s.bindBlob(2, QByteArray()); });
    put(6, [&](Statement &s) { s.bindNull(2); });
    put(7, [&](Statement &) {});

    Statement select(m_database, "SELECT value FROM t ORDER BY id");
    const auto next = [&] {
        EXPECT_EQ(select.step(), Result::Row);
        return select.type(0);
    };
    EXPECT_EQ(next(), Statement::Type::Text);
    EXPECT_EQ(select.text(0), text);
    EXPECT_EQ(next(), Statement::Type::Blob);
    EXPECT_EQ(select.blob(0), blob);
    EXPECT_EQ(next(), Statement::Type::Integer);
    EXPECT_EQ(select.integer(0), std::numeric_limits<qint64>::min());
    EXPECT_EQ(next(), Statement::Type::Double);
    EXPECT_EQ(select.real(0), -INFINITY);
    EXPECT_EQ(next(), Statement::Type::Text) << "empty is not null";
    EXPECT_EQ(next(), Statement::Type::Blob) << "empty is not null";
    EXPECT_FALSE(select.blob(0).isNull());
    EXPECT_EQ(next(), Statement::Type::Null);
    EXPECT_EQ(next(), Statement::Type::Null) << "reset takes the bindings away";
    EXPECT_EQ(select.step(), Result::Done);
}

TEST_F(StatementTest, FailureIsNeitherTheEndNorARow)
{
    Statement insert(m_database, "INSERT INTO t VALUES(?1, 0)");
    EXPECT_EQ(insert.bindInteger(1, 1).step(), Result::Done);
    insert.reset();
    EXPECT_EQ(insert.bindInteger(1, 1).step(), Result::Error);
    EXPECT_THAT(insert.errorText().toStdString(), ::testing::HasSubstr("UNIQUE"));
    insert.reset();
    EXPECT_EQ(insert.errorCode(), 0);
    EXPECT_EQ(insert.bindInteger(1, 2).step(), Result::Done) << "usable again after a reset";
}

TEST_F(StatementTest, FailureToPrepareOrBindShowsInTheStep)
{
    Statement misspelt(m_database, "SELEKT 1");
    EXPECT_FALSE(misspelt.isPrepared());
    EXPECT_EQ(misspelt.bindInteger(1, 1).step(), Result::Error);
    EXPECT_THAT(misspelt.errorText().toStdString(), ::testing::HasSubstr("SELEKT"));
    misspelt.reset();
    EXPECT_EQ(misspelt.step(), Result::Error);

    Statement insert(m_database, "INSERT INTO t VALUES(1, ?1)");
    EXPECT_EQ(insert.bindInteger(2, 1).bindInteger(1, 1).step(), Result::Error) << "no such parameter";
    insert.reset();
    EXPECT_EQ(insert.bindDouble(1, NAN).step(), Result::Error);
    Statement count(m_database, "SELECT count(*) FROM t");
    ASSERT_EQ(count.step(), Result::Row);
    EXPECT_EQ(count.integer(0), 0) << "nothing ran";

    Database closed;
    EXPECT_EQ(Statement(closed, "SELECT 1").step(), Result::Error);
    EXPECT_EQ(Statement(m_database, "-- nothing").step(), Result::Error);
}

TEST_F(StatementTest, TwoStatementsReadAtOnceAndOutliveTheDatabase)
{
    ASSERT_TRUE(m_database.execute("INSERT INTO t VALUES(1, 'a'), (2, 'b')"));
    Statement first(m_database, "SELECT value FROM t ORDER BY id");
    Statement second(m_database, "SELECT value FROM t ORDER BY id DESC");
    EXPECT_EQ(first.step(), Result::Row);
    EXPECT_EQ(second.step(), Result::Row);
    m_database.close();
    EXPECT_EQ(first.step(), Result::Row);
    EXPECT_EQ(first.text(0) + second.text(0), QStringLiteral("bb"));
}

TEST(Database, TellsFailureFromDamage)
{
    const testing::TestHome home;
    Database database;
    EXPECT_FALSE(database.open(home.path(QStringLiteral("missing/x.sqlite")), Database::Mode::Create));
    EXPECT_FALSE(database.isOpen());
    EXPECT_NE(database.errorCode(), 0);
    EXPECT_FALSE(Database::isDamage(database.errorCode()));

    const QString garbage = home.write(QStringLiteral("g.sqlite"), QByteArray(4096, 'x'));
    ASSERT_TRUE(database.open(garbage, Database::Mode::ReadWrite));
    EXPECT_FALSE(database.execute("CREATE TABLE t(x)"));
    EXPECT_TRUE(Database::isDamage(database.errorCode()));

    EXPECT_FALSE(database.open(home.path(QStringLiteral("new.sqlite")), Database::Mode::ReadWrite))
        << "only Create makes a file";
}

TEST(Database, ReadsAnImmutableFileWithAnAwkwardName)
{
    const testing::TestHome home;
    const QString path = home.path(QStringLiteral("50% of a?b#c d.sqlite"));
    Database database;
    ASSERT_TRUE(database.open(path, Database::Mode::Create));
    ASSERT_TRUE(database.execute("CREATE TABLE t(x)"));
    Database reader;
    ASSERT_TRUE(reader.open(path, Database::Mode::Immutable));
    EXPECT_TRUE(reader.isReadOnly());
    EXPECT_EQ(Statement(reader, "SELECT x FROM t").step(), Result::Done);
}

} // namespace quillbay
