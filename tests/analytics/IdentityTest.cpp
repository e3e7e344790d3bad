#include "analytics/ClientFixture.h"
#include "analytics/LogRecord.h"
#include "foundation/PreferenceStore.h"

#include <QVariant>

#include <thread>

using namespace quillbay;
using quillbay::testing::ClientFixture;
using quillbay::testing::LogRecord;

namespace {

constexpr char machine[] = "$device:11111111-2222-4333-8444-555555555555";

class IdentityTest : public ClientFixture
{
};

} // namespace

TEST_F(IdentityTest, BeginsWithTheMachine)
{
    auto client = startAndSettle();
    EXPECT_EQ(client->distinctId(), machine);
    EXPECT_EQ(client->identity().anonymousId, "11111111-2222-4333-8444-555555555555");
    EXPECT_EQ(stored("MPDistinctID"), QString::fromLatin1(machine));
    end(client);
    device->id.reset();
    EXPECT_EQ(startAndSettle()->distinctId(), machine) << "what is stored holds";
}

TEST_F(IdentityTest, IsRandomWithoutAMachineIdOrWhereThatIsAskedFor)
{
    device->id.reset();
    MarlpostOptions options;
    options.instanceName = "nameless";
    const std::string first = startAndSettle(options)->distinctId();
    EXPECT_EQ(startAndSettle(options)->distinctId(), first) << "kept over restarts";
    EXPECT_EQ(first.size(), std::string(machine).size());

    device = std::make_shared<quillbay::testing::FakeDeviceIdentity>();
    options.instanceName = "unique";
    options.useUniqueDistinctId = true;
    const std::string second = startAndSettle(options)->distinctId();
    EXPECT_NE(second, machine);
    EXPECT_NE(second, first);
    EXPECT_TRUE(second.starts_with("$device:")) << second;
    EXPECT_EQ(device->idReads, 0);
}

TEST_F(IdentityTest, ConnectsTheUserWithWhatTheyDidBefore)
{
    auto client = startAndSettle();
    client->track("before");
    client->identify("ada");
    client->track("after");
    client->identify("ada");
    settle(*client);
    EXPECT_EQ(events(),
              QStringList({QStringLiteral("before"), QStringLiteral("$identify"), QStringLiteral("after")}));
    const QJsonObject identify = rows("events")[1].value(QLatin1String("properties")).toObject();
    EXPECT_EQ(identify.value(QLatin1String("$anon_distinct_id")), QString::fromLatin1(machine));
    EXPECT_EQ(identify.value(QLatin1String("distinct_id")), QStringLiteral("ada"));
    EXPECT_EQ(lastProperties().value(QLatin1String("$user_id")), QStringLiteral("ada"));
    EXPECT_EQ(lastProperties().value(QLatin1String("$device_id")),
              QStringLiteral("11111111-2222-4333-8444-555555555555"));
    const MarlpostIdentity known = client->identity();
    end(client);
    client = startAndSettle();
    EXPECT_EQ(client->identity(), known);
    EXPECT_EQ(known.peopleDistinctID, "ada");
    client->identify("ada");
    settle(*client);
    EXPECT_EQ(events().size(), 3) << "nobody new";
}

TEST_F(IdentityTest, KnowsAnIdOfAnEarlierVersion)
{
    {
        PreferenceStore store(surroundings().places.preferencesFile);
        store.suite(QStringLiteral("Marlpost"))
            .setString(QStringLiteral("Marlpost-token-MPDistinctID"), QStringLiteral("old id"));
    }
    const auto client = startAndSettle();
    client->track("a");
    client->identify("ada");
    client->track("b");
    settle(*client);
    EXPECT_EQ(events(), QStringList({QStringLiteral("a"), QStringLiteral("b")}))
        << "there is no anonymous id to connect with";
    const QJsonObject first = rows("events")[0].value(QLatin1String("properties")).toObject();
    EXPECT_EQ(first.value(QLatin1String("distinct_id")), QStringLiteral("old id"));
    EXPECT_EQ(first.value(QLatin1String("$had_persisted_distinct_id")), true);
    EXPECT_FALSE(first.contains(QLatin1String("$device_id")));
    EXPECT_EQ(device->idReads, 0);
}

TEST_F(IdentityTest, RefusesABlankId)
{
    const LogRecord log;
    const auto client = startAndSettle();
    bool isDone = false;
    client->identify("");
    client->identify(" \t", true, [&isDone] { isDone = true; });
    EXPECT_TRUE(runUntil([&isDone] { return isDone; }));
    EXPECT_EQ(log.count(" cannot identify blank distinct id"), 2);
    EXPECT_EQ(client->distinctId(), machine);
    EXPECT_EQ(client->identity().peopleDistinctID, std::nullopt);
    EXPECT_TRUE(events().isEmpty());
}

TEST_F(IdentityTest, GivesTheUserAnotherName)
{
    const LogRecord log;
    auto client = startAndSettle();
    client->createAlias("ada", "ada");
    client->createAlias("", "ada");
    settle(*client);
    EXPECT_TRUE(events().isEmpty());
    EXPECT_EQ(log.count("alias: ada matches distinctId: ada - skipping api call."), 1);
    EXPECT_EQ(log.count(" create alias called with empty alias"), 1);

    client->createAlias("ada", machine, true, false);
    settle(*client);
    EXPECT_EQ(client->identity().peopleDistinctID, std::nullopt);
    client->createAlias("countess", "ada");
    settle(*client);
    EXPECT_EQ(events(), QStringList({QStringLiteral("$create_alias"), QStringLiteral("$create_alias"),
                                     QStringLiteral("$identify")}));
    const QJsonObject alias = rows("events")[1].value(QLatin1String("properties")).toObject();
    EXPECT_EQ(alias.value(QLatin1String("alias")), QStringLiteral("countess"));
    EXPECT_EQ(alias.value(QLatin1String("distinct_id")), QStringLiteral("ada"));
    EXPECT_EQ(client->identity().peopleDistinctID, "ada");
    EXPECT_EQ(stored("MPAlias"), QStringLiteral("countess"));
}

TEST_F(IdentityTest, ResetForgetsTheUserAndTheDevice)
{
    auto client = startAndSettle();
    client->registerSuperProperties({{"plan", "free"}});
    client->time("a");
    client->people().set({{"x", 1}});
    client->identify("ada");
    client->people().set({{"x", 1}});
    client->getGroup("company", "Acme")->set({{"x", 1}});
    client->track("a");
    const std::thread::id mainThread = std::this_thread::get_id();
    std::thread::id completionThread;
    client->reset([&completionThread] { completionThread = std::this_thread::get_id(); });
    ASSERT_TRUE(runUntil([&] { return completionThread != std::thread::id(); }));
    EXPECT_EQ(completionThread, mainThread);
    for (const char *kind : {"events", "people", "groups"})
        EXPECT_TRUE(rows(kind, 0).isEmpty() && rows(kind, 1).isEmpty()) << kind;

    const MarlpostIdentity fresh = client->identity();
    EXPECT_NE(fresh.distinctID, machine);
    EXPECT_EQ(fresh.distinctID, "$device:" + fresh.anonymousId.value_or("none"));
    EXPECT_EQ(fresh, (MarlpostIdentity{fresh.distinctID, {}, fresh.anonymousId, {}, {}, {}}));
    end(client);
    client = startAndSettle();
    client->track("a");
    settle(*client);
    EXPECT_EQ(client->identity(), fresh);
    EXPECT_FALSE(lastProperties().contains(QLatin1String("$duration")));
    EXPECT_FALSE(lastProperties().contains(QLatin1String("plan")));
}

TEST_F(IdentityTest, RecordsNothingOfAUserWhoOptedOut)
{
    auto client = startAndSettle();
    client->track("before");
    client->identify("ada");
    client->optOutTracking();
    EXPECT_TRUE(client->hasOptedOutTracking()) << "from the call on";
    const auto tryEverything = [&] {
        client->track("a");
        client->people().set({{"x", 1}});
        client->getGroup("company", "Acme")->set({{"x", 1}});
        client->setGroup("team", {"red"});
        client->createAlias("b", "c");
        int completions = 0;
        client->identify("eve", true, [&completions] { ++completions; });
        client->flush(true, [&completions] { ++completions; });
        ASSERT_TRUE(runUntil([&completions] { return completions == 2; })) << "nobody waits for ever";
        settle(*client);
        for (const char *kind : {"events", "people", "groups"})
            EXPECT_TRUE(rows(kind, 0).isEmpty() && rows(kind, 1).isEmpty()) << kind;
        EXPECT_TRUE(client->currentSuperProperties().isEmpty());
        EXPECT_TRUE(client->distinctId().starts_with("$device:"));
        EXPECT_NE(client->distinctId(), machine);
    };
    tryEverything();
    const int reads = device->idReads;
    end(client);

    client = start(); // at once: nothing may slip through before the choice is read
    tryEverything();
    EXPECT_TRUE(client->hasOptedOutTracking());
    EXPECT_EQ(device->idReads, reads) << "the machine's id is not even asked for";

    client->optInTracking("grace", {{"via", "menu"}});
    client->track("a");
    end(client);
    EXPECT_EQ(events(),
              QStringList({QStringLiteral("$identify"), QStringLiteral("$opt_in"), QStringLiteral("a")}));
    EXPECT_EQ(rows("events")[1].value(QLatin1String("properties")).toObject().value(QLatin1String("via")),
              QStringLiteral("menu"));
    client = startAndSettle();
    EXPECT_FALSE(client->hasOptedOutTracking());
    EXPECT_EQ(client->distinctId(), "grace");
}

TEST_F(IdentityTest, OptingOutByDefaultYieldsToAChoice)
{
    MarlpostOptions options;
    options.optOutTrackingByDefault = true;
    auto client = start(options);
    client->track("a");
    settle(*client);
    EXPECT_TRUE(client->hasOptedOutTracking());
    EXPECT_TRUE(events().isEmpty());
    EXPECT_EQ(device->idReads, 0);
    client->optInTracking();
    end(client);
    client = start(options);
    client->track("b");
    settle(*client);
    EXPECT_FALSE(client->hasOptedOutTracking());
    EXPECT_EQ(events(), QStringList({QStringLiteral("$opt_in"), QStringLiteral("b")}));
    client->optOutTracking();
    end(client);

    client = start(options);
    client->optInTracking(); // before the earlier choice is read: the later one counts
    client->track("c");
    settle(*client);
    EXPECT_FALSE(client->hasOptedOutTracking());
    EXPECT_EQ(events(), QStringList({QStringLiteral("$opt_in"), QStringLiteral("c")}));
}
