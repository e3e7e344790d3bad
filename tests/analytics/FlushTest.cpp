#include "analytics/Flush.h"

#include "analytics/FlushingClient.h"
#include "analytics/HttpService.h"
#include "analytics/JSONHandler.h"
#include "analytics/LogRecord.h"
#include "support/TestHome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <zlib.h>

namespace quillbay {

namespace {

using testing::FlushingClient;
using testing::HttpService;
using Ending = HttpService::Ending;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto Events = PersistenceType::Events;

std::string unzipped(const std::string &bytes)
{
    z_stream stream = {};
    std::string text(1'000'000, '\0');
    if (inflateInit2(&stream, 15 + 16) != Z_OK)
        return {};
    std::string input = bytes;
    stream.next_in = reinterpret_cast<Bytef *>(input.data());
    stream.avail_in = uInt(input.size());
    stream.next_out = reinterpret_cast<Bytef *>(text.data());
    stream.avail_out = uInt(text.size());
    const bool isWhole = inflate(&stream, Z_FINISH) == Z_STREAM_END;
    text.resize(stream.total_out);
    return inflateEnd(&stream) == Z_OK && isWhole ? text : std::string();
}

std::vector<int> idsIn(const std::string &body)
{
    std::vector<int> ids;
    for (const auto &entity : nlohmann::json::parse(body))
        ids.push_back(entity.at("id").get<int>());
    return ids;
}

class FlushTest : public ::testing::Test
{
protected:
    std::shared_ptr<FlushingClient> client(const std::string &url, bool useGzip = false)
    {
        auto surroundings = FlushRequest::defaultSurroundings();
        surroundings.clock = [this] { return now.load(); };
        surroundings.jitter = [] { return 7; };
        surroundings.bound = bound;
        const MarlpostPersistence::Places places = {home.path(QStringLiteral("cache")),
                                                    home.path(QStringLiteral("preferences.sqlite"))};
        return FlushingClient::make(places, url, useGzip, surroundings);
    }

    testing::TestHome home;
    testing::LogRecord log;
    std::atomic<double> now = 1'000'000;
    std::chrono::milliseconds bound = std::chrono::seconds(60);
};

TEST(RetryDelayTest, FailuresAndHintsDecide)
{
    const struct
    {
        int failures;
        std::optional<std::string> hint;
        int jitter;
        double seconds;
    } cases[] = {
        {0, {}, 29, 0},          {1, {}, 29, 0},
        {1, "30", 29, 30},       {2, {}, 0, 120},
        {2, {}, 29, 149},        {3, {}, 0, 240},
        {3, {}, 29, 269},        {4, {}, 29, 509},
        {5, {}, 0, 600},         {6, {}, 29, 600},
        {5000, {}, 29, 600},     {2, "900", 29, 900},
        {2, "100", 29, 149},     {0, "1.5e1", 0, 15},
        {0, "12 seconds", 0, 0}, {0, " 12", 0, 0},
        {0, "", 0, 0},           {0, "inf", 0, 0},
        {2, "nan", 0, 120},      {0, "Wed, 21 Oct 2026 07:28:00 GMT", 0, 0},
    };
    for (const auto &c : cases)
        EXPECT_EQ(retryDelay(c.failures, c.hint, c.jitter), c.seconds)
            << c.failures << ' ' << c.hint.value_or("-");
}

TEST_F(FlushTest, SendsBatchesOfFiftyOldestFirstAndDeletesThem)
{
    HttpService service;
    const auto sender = client(service.url());
    ASSERT_TRUE(sender->store(120));
    ASSERT_TRUE(sender->store(1, PersistenceType::People));
    ASSERT_TRUE(sender->store(1, PersistenceType::Groups));
    ASSERT_TRUE(sender->flushAndWait(true));

    const auto requests = service.requests();
    ASSERT_THAT(requests, SizeIs(5));
    std::vector<int> ids;
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(requests[i].method, "POST");
        EXPECT_EQ(requests[i].target, "/track/?ip=1");
        EXPECT_EQ(requests[i].headers.at("content-type"), "application/json");
        EXPECT_EQ(requests[i].headers.count("content-encoding"), 0U);
        const auto batch = idsIn(requests[i].body);
        EXPECT_THAT(batch, SizeIs(i < 2 ? 50 : 20));
        ids.insert(ids.end(), batch.begin(), batch.end());
    }
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
    const auto first = nlohmann::json::parse(requests[0].body).at(0);
    EXPECT_EQ(first, nlohmann::json::parse(
                         R"({"event":"event 0","$distinct_id":"someone","properties":{"number":0},"id":1})"));
    EXPECT_EQ(requests[3].target, "/engage/?ip=1");
    EXPECT_EQ(requests[4].target, "/groups/?ip=1");
    for (const PersistenceType type : AllPersistenceTypes)
        EXPECT_THAT(sender->stored(type), IsEmpty());
    EXPECT_EQ(log.count("Sending batch of data [{\"event\":\"event "), 5);
}

TEST_F(FlushTest, OrdinaryFlushSendsOneBatchOfTheSizeThatIsSet)
{
    HttpService service;
    const auto sender = client(service.url());
    ASSERT_TRUE(sender->store(30));
    sender->sender().setFlushBatchSize(100);
    EXPECT_EQ(sender->sender().flushBatchSize(), 50U);
    sender->sender().setFlushBatchSize(10);
    sender->sender().setUseIPAddressForGeoLocation(false);
    ASSERT_TRUE(sender->flushAndWait());
    ASSERT_THAT(service.requests(), SizeIs(1));
    EXPECT_THAT(idsIn(service.requests()[0].body), SizeIs(10));
    EXPECT_EQ(service.requests()[0].target, "/track/?ip=0");
    EXPECT_THAT(sender->stored(), SizeIs(20));
}

TEST_F(FlushTest, OnlyEventsAreCompressed)
{
    HttpService service;
    const auto sender = client(service.url(), true);
    ASSERT_TRUE(sender->store(50));
    ASSERT_TRUE(sender->store(1, PersistenceType::People));
    ASSERT_TRUE(sender->flushAndWait());
    const auto requests = service.requests();
    ASSERT_THAT(requests, SizeIs(2));
    EXPECT_EQ(requests[0].headers.at("content-encoding"), "gzip");
    EXPECT_THAT(idsIn(unzipped(requests[0].body)), SizeIs(50));
    EXPECT_EQ(requests[1].headers.count("content-encoding"), 0U);
    EXPECT_THAT(idsIn(requests[1].body), SizeIs(1));
    EXPECT_EQ(log.count("Payload gzipped: original size = "), 1);
}

TEST_F(FlushTest, ProxysHeadersAndItemsGoAlong)
{
    HttpService service;
    const auto sender = client(service.url());
    ASSERT_TRUE(sender->store(1));
    sender->networkQueue().async([sender, rows = sender->stored()] {
        sender->sender().flushQueueInBatches(
            rows, Events, {{"X-Proxy", "yes"}, {"Content-Type", "text/plain"}}, {{"a+b", "c d&é"}});
    });
    ASSERT_TRUE(sender->networkQueue().waitUntilDone(std::chrono::minutes(1)));
    ASSERT_TRUE(service.waitForRequests(1));
    const auto request = service.requests()[0];
    EXPECT_EQ(request.target, "/track/?ip=1&a%2Bb=c%20d%26%C3%A9");
    EXPECT_EQ(request.headers.at("x-proxy"), "yes");
    EXPECT_EQ(request.headers.at("content-type"), "text/plain");
}

TEST_F(FlushTest, RejectionInTheAnswerRemovesTheBatch)
{
    for (const char *body : {"0", "garbage", "1 ", ""}) {
        HttpService service(HttpService::Reply{200, body, {}, Ending::Whole});
        const auto sender = client(service.url());
        ASSERT_TRUE(sender->store(1));
        log.forget();
        ASSERT_TRUE(sender->flushAndWait());
        EXPECT_THAT(sender->stored(), IsEmpty()) << body;
        EXPECT_EQ(log.count("/track/ api rejected some items"), 1) << body;
        EXPECT_EQ(sender->sender().flushRequest().networkConsecutiveFailures(), 0);
    }
}

/// What fails keeps every row, stops the flush, and is sent once.
TEST_F(FlushTest, FailureKeepsTheRowsAndStops)
{
    const std::pair<HttpService::Reply, const char *> cases[] = {
        {{500, "1", {}, Ending::Whole}, "notOKStatusCode(500)"},
        {{204, "", {}, Ending::Whole}, "notOKStatusCode(204)"},
        {{404, "1", {}, Ending::Whole}, "notOKStatusCode(404)"},
        {{200, "1", {}, Ending::CutInBody}, "noData"},
        {{200, "1", {}, Ending::CutUnheard}, "other("},
        {{200, "1", {}, Ending::CutUnread}, "other("},
        {{200, "1", {}, Ending::EndlessBody}, "noData"},
        {{200, "1", {}, Ending::EndlessHeader}, "other("},
    };
    for (const auto &[reply, reason] : cases) {
        HttpService service(reply);
        const auto sender = client(service.url());
        ASSERT_TRUE(sender->store(60));
        log.forget();
        ASSERT_TRUE(sender->flushAndWait(true));
        EXPECT_EQ(log.count("API request to /track/ has failed with reason " + std::string(reason)), 1)
            << reason << ::testing::PrintToString(log.messages());
        EXPECT_EQ(log.count("API request to /track/ has failed with reason other(no answer in time)"), 0)
            << reason;
        EXPECT_EQ(service.connections(), 1) << reason;
        EXPECT_EQ(sender->sender().flushRequest().networkConsecutiveFailures(), 1);
        EXPECT_FALSE(sender->sender().flushRequest().requestNotAllowed());
        // The next one takes them all, in the same order.
        service.setReply({});
        ASSERT_TRUE(sender->flushAndWait(true));
        EXPECT_THAT(sender->stored(), IsEmpty());
        const auto bodies = service.requests();
        ASSERT_GE(bodies.size(), 2U);
        EXPECT_THAT(idsIn(bodies[bodies.size() - 2].body), SizeIs(50)) << reason;
        EXPECT_THAT(idsIn(bodies.back().body), SizeIs(10)) << reason;
    }
}

TEST_F(FlushTest, RefusedConnectionKeepsTheRows)
{
    HttpService service;
    const auto sender = client(service.url());
    service.refuse();
    ASSERT_TRUE(sender->store(1));
    ASSERT_TRUE(sender->flushAndWait());
    EXPECT_THAT(sender->stored(), SizeIs(1));
    EXPECT_EQ(log.count("API request to /track/ has failed with reason other("), 1);
}

TEST_F(FlushTest, SilenceEndsWithTheBound)
{
    bound = std::chrono::milliseconds(300);
    HttpService service(HttpService::Reply{200, "1", {}, Ending::Silence});
    const auto sender = client(service.url());
    ASSERT_TRUE(sender->store(2));
    ASSERT_TRUE(sender->flushAndWait());
    EXPECT_THAT(service.requests(), SizeIs(1));
    EXPECT_THAT(sender->stored(), SizeIs(2));
    EXPECT_EQ(sender->sender().flushRequest().networkConsecutiveFailures(), 1);
    EXPECT_EQ(log.count("API request to /track/ has failed with reason other(no answer in time)"), 1);
}

TEST_F(FlushTest, BackOffHoldsEveryKindUntilItsTime)
{
    HttpService service(HttpService::Reply{500, "", {}, Ending::Whole});
    const auto sender = client(service.url());
    FlushRequest &request = sender->sender().flushRequest();
    ASSERT_TRUE(sender->store(1));
    ASSERT_TRUE(sender->store(1, PersistenceType::People));
    ASSERT_TRUE(sender->flushAndWait()); // both kinds fail
    EXPECT_EQ(request.networkConsecutiveFailures(), 2);
    EXPECT_EQ(request.networkRequestsAllowedAfterTime(), now + 127);
    ASSERT_THAT(service.requests(), SizeIs(2));
    now = now + 126;
    ASSERT_TRUE(sender->flushAndWait());
    EXPECT_THAT(service.requests(), SizeIs(2));
    EXPECT_EQ(request.networkConsecutiveFailures(), 2);
    now = now + 1;
    service.setReply({});
    ASSERT_TRUE(sender->flushAndWait());
    EXPECT_THAT(service.requests(), SizeIs(4));
    EXPECT_EQ(request.networkConsecutiveFailures(), 0);
    EXPECT_EQ(request.networkRequestsAllowedAfterTime(), now);
}

TEST_F(FlushTest, ServicesHintCountsFromTheFirstAnswer)
{
    HttpService service(HttpService::Reply{429, "", "Retry-After: 900\r\n", Ending::Whole});
    const auto sender = client(service.url());
    ASSERT_TRUE(sender->store(60));
    ASSERT_TRUE(sender->flushAndWait());
    EXPECT_EQ(sender->sender().flushRequest().networkRequestsAllowedAfterTime(), now + 900);
    now = now + 900;
    // A hint with a success keeps the next batch back as well.
    service.setReply({200, "1", "Retry-After: 30\r\n", Ending::Whole});
    ASSERT_TRUE(sender->flushAndWait(true));
    EXPECT_THAT(sender->stored(), SizeIs(10));
    EXPECT_EQ(sender->sender().flushRequest().networkRequestsAllowedAfterTime(), now + 30);
}

TEST_F(FlushTest, WithoutAServiceNothingHappens)
{
    class NoNetwork final : public Network
    {
    public:
        void apiRequest(const std::string &, Resource, Failure, Success, std::stop_token) override
        {
            ++calls;
        }
        std::atomic_int calls = 0;
    };
    const auto network = std::make_shared<NoNetwork>();
    auto surroundings = FlushRequest::defaultSurroundings();
    surroundings.network = network;
    FlushRequest request("", surroundings);
    EXPECT_FALSE(request.sendRequest("[]", Events, true, {}, {}, true));
    Flush flush("", true, surroundings);
    flush.flushQueueInBatches({{1, "{}"}}, Events);
    EXPECT_EQ(network->calls, 0);
    EXPECT_EQ(request.networkConsecutiveFailures(), 0);
    EXPECT_THAT(log.messages(), IsEmpty());
}

class CountingDelegate final : public FlushDelegate
{
public:
    void flush(bool performFullFlush, std::function<void()>) override
    {
        isOrdinary = isOrdinary && !performFullFlush && QThread::currentThread() == qApp->thread();
        ++flushes;
    }
    void flushSuccess(FlushType, std::vector<std::int32_t>) override {}

    bool waitForFlush()
    {
        const int before = flushes;
        for (const QDeadlineTimer bound(20'000); flushes == before && !bound.hasExpired();)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        return flushes > before;
    }

    int flushes = 0;
    bool isOrdinary = true;
};

TEST(FlushTimerTest, AsksForOrdinaryFlushesUntilStopped)
{
    const auto delegate = std::make_shared<CountingDelegate>();
    Flush flush("http://127.0.0.1:9");
    flush.setDelegate(delegate);
    std::thread([&flush] { flush.setFlushInterval(0.005); }).join(); // from wherever
    EXPECT_TRUE(delegate->waitForFlush());
    EXPECT_TRUE(delegate->waitForFlush());
    EXPECT_TRUE(delegate->isOrdinary);

    const auto witness = std::make_shared<CountingDelegate>();
    Flush other("http://127.0.0.1:9");
    other.setDelegate(witness);
    flush.applicationWillResignActive();
    other.setFlushInterval(0.005);
    EXPECT_TRUE(witness->waitForFlush()); // by now the first timer has stopped
    const int stopped = delegate->flushes;
    EXPECT_TRUE(witness->waitForFlush());
    EXPECT_TRUE(witness->waitForFlush());
    EXPECT_EQ(delegate->flushes, stopped);
    flush.startFlushTimer();
    EXPECT_TRUE(delegate->waitForFlush());
}

TEST(FlushTimerTest, NoTimerWithoutAServiceOrAnInterval)
{
    const auto idle = std::make_shared<CountingDelegate>();
    Flush noService("");
    noService.setDelegate(idle);
    noService.setFlushInterval(0.001);
    Flush noInterval("http://127.0.0.1:9");
    noInterval.setDelegate(idle);
    noInterval.setFlushInterval(0);
    const auto witness = std::make_shared<CountingDelegate>();
    Flush running("http://127.0.0.1:9");
    running.setDelegate(witness);
    running.setFlushInterval(0.02);
    EXPECT_TRUE(witness->waitForFlush());
    EXPECT_EQ(idle->flushes, 0);
}

} // namespace

} // namespace quillbay
