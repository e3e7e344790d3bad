#include "analytics/ClientFixture.h"
#include "analytics/LogRecord.h"
#include "analytics/PropertyNotifications.h"

#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QVariant>

#include <cmath>
#include <limits>

using namespace quillbay;
using quillbay::testing::ClientFixture;
using quillbay::testing::LogRecord;

namespace {

class TrackingTest : public ClientFixture
{
};

QJsonObject metadata(const QJsonObject &row)
{
    return row.value(QLatin1String("$mp_metadata")).toObject();
}

} // namespace

TEST_F(TrackingTest, StoresAnEventWithAllThatBelongsToIt)
{
    const auto client = startAndSettle();
    client->track("Opened", {{"door", "front"}, {"$model", "mine"}});
    settle(*client);

    ASSERT_EQ(events(), QStringList(QStringLiteral("Opened")));
    QJsonObject properties = lastProperties();
    const QJsonObject expected{
        {QStringLiteral("$os"), QStringLiteral("macOS")},
        {QStringLiteral("$os_version"), QStringLiteral("Test System 12")},
        {QStringLiteral("$screen_height"), 1080},
        {QStringLiteral("$screen_width"), 1920},
        {QStringLiteral("$app_build_number"), QStringLiteral("34")},
        {QStringLiteral("$app_version_string"), QStringLiteral("1.2")},
        {QStringLiteral("mp_lib"), QStringLiteral("swift")},
        {QStringLiteral("$lib_version"), QStringLiteral("4.4.0")},
        {QStringLiteral("$manufacturer"), QStringLiteral("Apple")},
        {QStringLiteral("$model"), QStringLiteral("mine")}, // the caller's wins
        {QStringLiteral("token"), QStringLiteral("token")},
        {QStringLiteral("time"), qint64(1'700'000'000'500)},
        {QStringLiteral("distinct_id"), QStringLiteral("$device:11111111-2222-4333-8444-555555555555")},
        {QStringLiteral("$device_id"), QStringLiteral("11111111-2222-4333-8444-555555555555")},
        {QStringLiteral("door"), QStringLiteral("front")},
    };
    EXPECT_EQ(properties, expected);
}

TEST_F(TrackingTest, TakesAnEventWithoutANameForOneOfTheirOwn)
{
    const LogRecord log;
    const auto client = startAndSettle();
    client->track("");
    settle(*client);
    EXPECT_EQ(events(), QStringList(QStringLiteral("mp_event")));
    EXPECT_EQ(log.count("marlpost track called with empty event parameter. using 'mp_event'"), 1);
}

TEST_F(TrackingTest, RefusesWhatCannotBeSent)
{
    const auto client = startAndSettle();
    const MarlpostDictionary bad{{"list", MarlpostArray{1, std::numeric_limits<double>::quiet_NaN()}}};
#ifndef NDEBUG
    EXPECT_DEATH(
        assertPropertyTypes(bad),
        "Property values must be of valid type \\(MarlpostType\\) and valid value. Got Array and Value");
#else
    const LogRecord log;
    client->track("Opened", bad);
    client->registerSuperProperties(bad);
    client->people().set(bad);
    settle(*client);
    EXPECT_EQ(events(), QStringList());
    EXPECT_TRUE(client->currentSuperProperties().isEmpty());
    EXPECT_TRUE(rows("people", 1).isEmpty());
    EXPECT_EQ(log.count("Property values must be of valid type (MarlpostType) and valid value. Got Array and "
                        "Value"),
              3);
#endif
}

TEST_F(TrackingTest, CountsTheEntitiesOfASession)
{
    auto client = startAndSettle();
    client->track("a");
    client->people().set({{"x", 1}});
    client->track("b");
    *clock = 1'700'000'100.75;
    client->reset();
    client->track("c");
    settle(*client);
    client->track("d");
    end(client);
    client = startAndSettle();
    client->track("e");
    settle(*client);

    const QList<QJsonObject> all = rows("events");
    ASSERT_EQ(all.size(), 3) << "the reset empties the store";
    QSet<QString> ids;
    QStringList numbers;
    for (const QJsonObject &row : all) {
        const QJsonObject data = metadata(row);
        numbers.append(QString::number(data.value(QLatin1String("$mp_session_seq_id")).toInt(-1)));
        ids.insert(data.value(QLatin1String("$mp_event_id")).toString());
        ids.insert(data.value(QLatin1String("$mp_session_id")).toString());
        EXPECT_EQ(data.value(QLatin1String("$mp_session_start_sec")).toDouble(), 1'700'000'100);
    }
    EXPECT_EQ(numbers.join(QLatin1Char(' ')), QStringLiteral("0 1 0"));
    EXPECT_EQ(ids.size(), 5) << "three events in two sessions";
    for (const QString &id : ids)
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9a-f]{16}$")).match(id).hasMatch());
}

TEST_F(TrackingTest, NumbersPeopleApartFromEvents)
{
    const auto client = startAndSettle();
    client->track("a");
    client->people().set({{"x", 1}});
    client->people().set({{"x", 2}});
    settle(*client);
    EXPECT_EQ(metadata(rows("events").last()).value(QLatin1String("$mp_session_seq_id")).toInt(-1), 0);
    EXPECT_EQ(metadata(rows("people", 1).last()).value(QLatin1String("$mp_session_seq_id")).toInt(-1), 1);
}

TEST_F(TrackingTest, TimesAnEventOnceAndOverARestart)
{
    auto client = startAndSettle();
    client->time("Upload");
    client->time("Download");
    end(client);

    *clock = 1'700'000'002.0004;
    client = startAndSettle();
    EXPECT_NEAR(client->eventElapsedTime("Upload"), 1.5004, 1e-6);
    EXPECT_EQ(client->eventElapsedTime("Other"), 0);
    client->track("Upload");
    client->clearTimedEvent("Download");
    settle(*client);
    EXPECT_EQ(lastProperties().value(QLatin1String("$duration")).toDouble(), 1.5);
    client->track("Upload");
    client->track("Download");
    end(client);
    client = startAndSettle();
    client->track("Upload");
    settle(*client);
    for (const QJsonObject &row : rows("events").mid(1))
        EXPECT_FALSE(row.value(QLatin1String("properties")).toObject().contains(QLatin1String("$duration")));
}

TEST_F(TrackingTest, SendsSuperPropertiesWithEveryEventOverARestart)
{
    MarlpostOptions options;
    options.superProperties = {{"plan", "free"}};
    auto client = startAndSettle(options);
    client->registerSuperProperties({{"colour", "red"}, {"seats", 1}});
    client->registerSuperPropertiesOnce({{"colour", "blue"}, {"size", 3}});
    client->registerSuperPropertiesOnce({{"plan", "paid"}, {"seats", 2}}, MarlpostType("free"));
    client->track("a", {{"size", 4}});
    end(client);
    QJsonObject properties = lastProperties();
    EXPECT_EQ(properties.value(QLatin1String("colour")), QStringLiteral("red"));
    EXPECT_EQ(properties.value(QLatin1String("plan")), QStringLiteral("paid"));
    EXPECT_EQ(properties.value(QLatin1String("seats")), 1);
    EXPECT_EQ(properties.value(QLatin1String("size")), 4) << "the caller's wins";

    client = startAndSettle();
    client->unregisterSuperProperty("colour");
    PropertyNotifications::post(PropertyNotifications::Register, {{"told", true}, {"plan", "free"}});
    PropertyNotifications::post(PropertyNotifications::Unregister, {{"seats", nullptr}});
    settle(*client);
    EXPECT_EQ(client->currentSuperProperties(),
              (MarlpostDictionary{{"plan", "free"}, {"size", 3}, {"told", true}}));
    client->clearSuperProperties();
    end(client);
    client = startAndSettle();
    EXPECT_TRUE(client->currentSuperProperties().isEmpty());
}

TEST_F(TrackingTest, AddsWhatItIsStartedWithBeforeTheFirstEvent)
{
    MarlpostOptions options;
    options.superProperties = {{"plan", "free"}};
    const auto client = start(options);
    client->track("a");
    settle(*client);
    EXPECT_EQ(lastProperties().value(QLatin1String("plan")), QStringLiteral("free"));
}

TEST_F(TrackingTest, StoresWhatIsQueuedWhenTheInstanceIsLetGo)
{
    auto client = start();
    for (int i = 0; i < 20; ++i)
        client->track("a");
    const std::weak_ptr<MarlpostInstance> gone = client;
    client.reset();
    ASSERT_TRUE(runUntil([&gone] { return gone.expired(); }));
    EXPECT_EQ(events().size(), 20);
}
