#include "analytics/FlushingClient.h"
#include "analytics/HttpService.h"
#include "foundation/Database.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcessEnvironment>

#include <gmock/gmock.h>

namespace quillbay {

namespace {

using testing::FlushingClient;
using testing::HttpService;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// What a client that ends without warning leaves to the next one.
class KilledClientTest : public ::testing::Test
{
protected:
    testing::TestProgram writer(const QString &what, const QString &argument)
    {
        return {QStringLiteral(ANALYTICS_WRITER),
                {places.folder, places.preferencesFile, what, argument},
                QProcessEnvironment::systemEnvironment()};
    }
    std::shared_ptr<FlushingClient> successor(const HttpService &service) const
    {
        return FlushingClient::make(places, service.url());
    }

    testing::TestHome home;
    const MarlpostPersistence::Places places = {home.path(QStringLiteral("cache")),
                                                home.path(QStringLiteral("preferences.sqlite"))};
};

TEST_F(KilledClientTest, StoredEventsAreThere)
{
    const HttpService service;
    {
        auto program = writer(QStringLiteral("track"), QStringLiteral("25"));
        ASSERT_TRUE(program.waitFor(QStringLiteral("stored")));
        program.kill();
    }
    const auto next = successor(service);
    EXPECT_THAT(next->stored(), SizeIs(25));
    ASSERT_TRUE(next->flushAndWait());
    EXPECT_THAT(service.requests(), SizeIs(1));
    EXPECT_THAT(next->stored(), IsEmpty());
}

TEST_F(KilledClientTest, UnansweredBatchIsSentAgain)
{
    HttpService service(HttpService::Reply{200, "1", {}, HttpService::Ending::Silence});
    ASSERT_TRUE(successor(service)->store(3));
    {
        auto program = writer(QStringLiteral("flush"), QString::fromStdString(service.url()));
        ASSERT_TRUE(service.waitForRequests(1));
        program.kill();
    }
    service.setReply({});
    const auto next = successor(service);
    EXPECT_THAT(next->stored(), SizeIs(3));
    ASSERT_TRUE(next->flushAndWait());
    ASSERT_THAT(service.requests(), SizeIs(2));
    EXPECT_EQ(service.requests()[0].body, service.requests()[1].body);
    EXPECT_THAT(next->stored(), IsEmpty());
}

TEST_F(KilledClientTest, BatchTakenButNotDeletedIsSentTwice)
{
    const HttpService service;
    ASSERT_TRUE(successor(service)->store(3));
    Database database;
    ASSERT_TRUE(
        database.open(places.folder + QStringLiteral("/0123abcd_MPDB.sqlite"), Database::Mode::ReadWrite));
    ASSERT_TRUE(database.execute("CREATE TRIGGER keep BEFORE DELETE ON marlpost_0123abcd_events "
                                 "BEGIN SELECT RAISE(ABORT, 'kept'); END"));
    {
        auto program = writer(QStringLiteral("flush"), QString::fromStdString(service.url()));
        ASSERT_TRUE(program.waitFor(QStringLiteral("[Marlpost - error] Failed to delete rows from table")));
        program.kill();
    }
    ASSERT_TRUE(database.execute("DROP TRIGGER keep"));
    const auto next = successor(service);
    ASSERT_TRUE(next->flushAndWait());
    ASSERT_THAT(service.requests(), SizeIs(2));
    EXPECT_EQ(service.requests()[0].body, service.requests()[1].body);
    EXPECT_THAT(next->stored(), IsEmpty());
}

TEST_F(KilledClientTest, EndOfTheProgramWaitsForNoAnswer)
{
    const HttpService service(HttpService::Reply{200, "1", {}, HttpService::Ending::Silence});
    ASSERT_TRUE(successor(service)->store(3));
    auto program = writer(QStringLiteral("quit"), QString::fromStdString(service.url()));
    ASSERT_TRUE(service.waitForRequests(1));
    program.send("now");
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_THAT(successor(service)->stored(), SizeIs(3));
}

} // namespace

} // namespace quillbay
