#include "analytics/FlushingClient.h"
#include "analytics/HttpService.h"
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

/// What a client that is killed without warning leaves to the next one.
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
        auto program = writer(QStringLiteral("store"), QStringLiteral("25"));
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
    {
        auto program = writer(QStringLiteral("flush"), QString::fromStdString(service.url()));
        ASSERT_TRUE(program.waitFor(QStringLiteral("taken")));
        program.kill();
    }
    const auto next = successor(service);
    ASSERT_TRUE(next->flushAndWait());
    ASSERT_THAT(service.requests(), SizeIs(2));
    EXPECT_EQ(service.requests()[0].body, service.requests()[1].body);
    EXPECT_THAT(next->stored(), IsEmpty());
}

} // namespace

} // namespace quillbay
