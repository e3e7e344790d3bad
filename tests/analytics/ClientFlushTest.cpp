#include "analytics/ClientFixture.h"
#include "analytics/HttpService.h"
#include "analytics/LogRecord.h"
#include "analytics/Marlpost.h"
#include "analytics/MarlpostManager.h"
#include "foundation/Database.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <future>

using namespace quillbay;
using quillbay::testing::ClientFixture;
using quillbay::testing::HttpService;
using quillbay::testing::LogRecord;

namespace {

class ClientFlushTest : public ClientFixture
{
protected:
    MarlpostOptions to(const HttpService &service) const
    {
        MarlpostOptions options;
        options.flushInterval = 0;
        options.proxyServerConfig = ProxyServerConfig{service.url(), {}};
        return options;
    }
    bool flushAndWait(MarlpostInstance &client, bool isFull = false)
    {
        bool isDone = false;
        client.flush(isFull, [&isDone] { isDone = true; });
        const bool came = runUntil([&isDone] { return isDone; });
        settle(client);
        return came;
    }
};

QJsonArray entities(const HttpService::Request &request)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(request.body)).array();
}

/// The names of the events that arrived, in their order.
QStringList received(const HttpService &service)
{
    QStringList names;
    for (const HttpService::Request &request : service.requests()) {
        for (const QJsonValue entity : entities(request))
            names.append(entity.toObject().value(QLatin1String("event")).toString());
    }
    return names;
}

} // namespace

TEST_F(ClientFlushTest, SendsEventsThenPeopleThenGroups)
{
    const HttpService service;
    const auto client = startAndSettle(to(service));
    client->people().set({{"held", "back"}});
    client->getGroup("company", "Acme")->set({{"size", 3}});
    client->track("a");
    ASSERT_TRUE(flushAndWait(*client));
    client->identify("ada");
    ASSERT_TRUE(flushAndWait(*client));

    QStringList targets;
    for (const HttpService::Request &request : service.requests())
        targets.append(QString::fromStdString(request.target).section(QLatin1Char('?'), 0, 0));
    EXPECT_EQ(targets.join(QLatin1Char(' ')), QStringLiteral("/track/ /groups/ /track/ /engage/"));
    EXPECT_EQ(received(service).first(), QStringLiteral("a"));
    for (const char *kind : {"events", "people", "groups"})
        EXPECT_TRUE(rows(kind, 0).isEmpty() && rows(kind, 1).isEmpty()) << kind;
}

TEST_F(ClientFlushTest, SendsNothingTwiceHoweverOftenItIsAskedMeanwhile)
{
    std::promise<void> asked;
    const HttpService service(
        [answer = asked.get_future().share()](const HttpService::Request &, int number) {
            if (number == 0)
                answer.wait_for(std::chrono::seconds(30));
            return HttpService::Reply{};
        });
    const auto client = startAndSettle(to(service));
    int completions = 0;
    QStringList expected;
    for (int i = 0; i < 30; ++i) {
        expected.append(QString::number(i));
        client->track(std::to_string(i));
        client->flush(false, [&completions] { ++completions; });
    }
    ASSERT_TRUE(service.waitForRequests(1));
    ASSERT_TRUE(client->trackingQueue().waitUntilDone(std::chrono::seconds(30)));
    asked.set_value();
    ASSERT_TRUE(runUntil([&completions] { return completions == 30; }));
    EXPECT_EQ(received(service), expected);
}

TEST_F(ClientFlushTest, GoesOnWithoutAStoreUntilThereIsOne)
{
    const QString path = folder.filePath(QStringLiteral("cache/token_MPDB.sqlite"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("cache")));
    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QFile::WriteOnly) && damaged.write(QByteArray(5000, 'x')) == 5000);
    damaged.close();
    const HttpService service;
    const auto client = startAndSettle(to(service));
    client->track("lost");
    client->people().set({{"x", 1}});
    client->identify("ada");
    ASSERT_TRUE(flushAndWait(*client, true));
    EXPECT_EQ(service.connections(), 0);
    EXPECT_EQ(client->distinctId(), "ada");

    ASSERT_TRUE(QFile::remove(path));
    client->track("kept");
    ASSERT_TRUE(flushAndWait(*client));
    EXPECT_EQ(received(service), QStringList(QStringLiteral("kept")));
}

TEST_F(ClientFlushTest, KeepsWhatTheServiceRefusesAndDropsAutomaticEvents)
{
    HttpService service(HttpService::Reply{500, "0", {}});
    const auto client = startAndSettle(to(service));
    client->setTrackAutomaticEventsEnabled(false);
    client->track("a");
    client->track("$ae_first");
    ASSERT_TRUE(flushAndWait(*client));
    EXPECT_EQ(events(), QStringList(QStringLiteral("a")));
    service.setReply({200, "1", {}});
    ASSERT_TRUE(flushAndWait(*client));
    EXPECT_EQ(events(), QStringList());
    EXPECT_EQ(received(service), QStringList({QStringLiteral("a"), QStringLiteral("a")}));
}

TEST_F(ClientFlushTest, DoesNotRepeatRowsThatItCannotDelete)
{
    const HttpService service;
    const auto client = startAndSettle(to(service));
    client->track("a");
    settle(*client);
    Database locker;
    ASSERT_TRUE(
        locker.open(folder.filePath(QStringLiteral("cache/token_MPDB.sqlite")), Database::Mode::ReadWrite));
    ASSERT_TRUE(locker.execute("CREATE TRIGGER keep BEFORE DELETE ON marlpost_token_events "
                               "BEGIN SELECT RAISE(ABORT, 'kept'); END"));
    ASSERT_TRUE(flushAndWait(*client));
    ASSERT_TRUE(flushAndWait(*client));
    client->track("b");
    ASSERT_TRUE(flushAndWait(*client));
    EXPECT_EQ(received(service), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(events(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    ASSERT_TRUE(locker.execute("DROP TRIGGER keep"));
    ASSERT_TRUE(flushAndWait(*client));
    EXPECT_EQ(received(service).size(), 2);
    EXPECT_TRUE(events().isEmpty()) << "deleted as soon as that can be";
}

TEST_F(ClientFlushTest, SendsNothingOfAUserWhoOptsOutMeanwhile)
{
    std::weak_ptr<MarlpostInstance> instance;
    HttpService service([&instance](const HttpService::Request &, int number) {
        if (number == 0)
            instance.lock()->optOutTracking();
        return HttpService::Reply{};
    });
    const auto client = startAndSettle(to(service));
    instance = client;
    client->getGroup("company", "Acme")->set({{"size", 3}});
    for (int i = 0; i < 60; ++i)
        client->track("a");
    bool isDone = false;
    client->flush(true);
    client->flush(true, [&isDone] { isDone = true; });
    ASSERT_TRUE(runUntil([&isDone] { return isDone; }));
    settle(*client);
    EXPECT_EQ(service.requests().size(), 1);
}

TEST_F(ClientFlushTest, AsksTheProxyForWhatItWants)
{
    struct Proxy final : MarlpostProxyServerDelegate
    {
        ServerProxyResource resourceForNewRequest(const std::string &instanceName) override
        {
            return {{{"X-Instance", instanceName}}, {{"extra", "a+b"}}};
        }
    };
    const HttpService service;
    const auto proxy = std::make_shared<Proxy>();
    MarlpostOptions options = to(service);
    options.proxyServerConfig->delegate = proxy;
    const auto client = startAndSettle(options);
    client->track("a");
    ASSERT_TRUE(flushAndWait(*client));
    ASSERT_EQ(service.requests().size(), 1);
    EXPECT_EQ(service.requests()[0].target, "/track/?ip=1&extra=a%2Bb");
    EXPECT_EQ(service.requests()[0].headers.at("x-instance"), "token");
}

TEST_F(ClientFlushTest, FlushesWhenTheProgramIsLeft)
{
    const HttpService service;
    const auto client = startAndSettle(to(service));
    client->track("a");
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_TRUE(runUntil([&] { return received(service) == QStringList(QStringLiteral("a")); }));
}

TEST_F(ClientFlushTest, NobodyWaitsForAServiceThatNeverAnswers)
{
    std::optional<HttpService> service(HttpService::Reply{200, {}, {}, HttpService::Ending::Silence});
    auto client = startAndSettle(to(*service));
    client->track("a");
    client->flush();
    ASSERT_TRUE(service->waitForRequests(1));
    for (int i = 0; i < 100; ++i) {
        client->track("b");
        client->flush();
    }
    client->identify("ada");
    client->applicationWillResignActive();
    EXPECT_TRUE(client->trackingQueue().waitUntilDone(std::chrono::seconds(30)))
        << "what is recorded is stored meanwhile";
    EXPECT_EQ(events().size(), 102);
    EXPECT_EQ(client->flushSettings().flushRequest().networkConsecutiveFailures(), 0)
        << "somebody waited until the time was up";
    const std::weak_ptr<MarlpostInstance> gone = client;
    client.reset();
    EXPECT_FALSE(gone.expired()) << "the request still runs";
    service.reset();
    EXPECT_TRUE(runUntil([&gone] { return gone.expired(); }));
}

TEST_F(ClientFlushTest, WithoutAServiceItOnlyStores)
{
    const LogRecord log;
    MarlpostOptions options;
    const auto client = startAndSettle(options);
    client->track("a");
    ASSERT_TRUE(flushAndWait(*client, true));
    EXPECT_EQ(events(), QStringList(QStringLiteral("a")));
    EXPECT_EQ(client->flushSettings().flushRequest().networkConsecutiveFailures(), 0);
    EXPECT_EQ(log.count("Sending batch of data"), 0);
    EXPECT_EQ(log.count("API request"), 0);
}

TEST_F(ClientFlushTest, KeepsOneInstanceForEachName)
{
    const LogRecord log;
    MarlpostManager manager;
    EXPECT_EQ(manager.getInstance("one"), nullptr);
    EXPECT_EQ(log.count("no such instance: one"), 1);
    MarlpostOptions options;
    options.token = token;
    options.instanceName = "one";
    const auto one = manager.initialize(options, surroundings());
    options.instanceName = "two";
    const auto two = manager.initialize(options, surroundings());
    EXPECT_EQ(manager.mainInstance(), two);
    options.instanceName = "one";
    EXPECT_EQ(manager.initialize(options, surroundings()), one);
    EXPECT_EQ(manager.mainInstance(), one);
    EXPECT_EQ(manager.getInstance("two"), two);
    EXPECT_EQ(one->trackingQueue().label(), "com.marlpost.one.tracking)");
    EXPECT_EQ(one->networkQueue().label(), "com.marlpost.one.network)");
    one->track("a");
    settle(*one);
    settle(*two);
    EXPECT_EQ(events("one"), QStringList(QStringLiteral("a")));
    EXPECT_EQ(events("two"), QStringList());
    EXPECT_TRUE(manager.isIdle());

    EXPECT_EQ(Marlpost::safeMainInstance(), nullptr);
    EXPECT_EQ(
        log.count("WARNING: Marlpost main instance is NOT initialized. Call Marlpost.initialize(...) first."),
        1);
}
