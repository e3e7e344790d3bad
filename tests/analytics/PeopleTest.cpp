#include "analytics/ClientFixture.h"
#include "analytics/LogRecord.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace quillbay;
using quillbay::testing::ClientFixture;
using quillbay::testing::LogRecord;

namespace {

class PeopleTest : public ClientFixture
{
};

QJsonValue at(const QJsonObject &row, const char *key)
{
    return row.value(QLatin1String(key));
}

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

TEST_F(PeopleTest, HoldsRecordsBackUntilTheUserIsIdentified)
{
    auto client = startAndSettle();
    client->people().increment({{"visits", 1}});
    client->identify("nobody's profile", false);
    client->people().increment({{"visits", 2}});
    settle(*client);
    EXPECT_EQ(rows("people", 0).size(), 0);
    ASSERT_EQ(rows("people", 1).size(), 2);
    EXPECT_EQ(at(rows("people", 1)[0], "$distinct_id"),
              QStringLiteral("$device:11111111-2222-4333-8444-555555555555"))
        << "a record without an id would never be sent";
    end(client);

    client = startAndSettle();
    client->identify("ada");
    client->people().increment({{"visits", 3}});
    settle(*client);
    EXPECT_EQ(rows("people", 1).size(), 0);
    const QList<QJsonObject> sendable = rows("people", 0);
    ASSERT_EQ(sendable.size(), 3);
    EXPECT_EQ(at(sendable[2], "$distinct_id"), QStringLiteral("ada"));
    EXPECT_EQ(at(sendable[2], "$user_id"), QStringLiteral("ada"));
    EXPECT_EQ(at(sendable[2], "$device_id"), QStringLiteral("11111111-2222-4333-8444-555555555555"));
    EXPECT_EQ(at(sendable[2], "$token"), QStringLiteral("token"));
    EXPECT_EQ(at(sendable[2], "$time"), qint64(1'700'000'000'500));
    EXPECT_EQ(at(sendable[2], "$add"), object(R"({"visits": 3})"));
}

TEST_F(PeopleTest, DescribesTheProgramWithWhatIsSet)
{
    const auto client = startAndSettle();
    client->people().set({{"name", "Ada"}, {"$ios_version", "mine"}});
    client->people().setOnce({{"seen", true}});
    settle(*client);
    QJsonObject automatic = object(R"({"$ios_app_version": "34", "$ios_app_release": "1.2",
        "$ios_device_model": "Acme Book 14", "$ios_version": "Test System 12", "$ios_lib_version": "4.4.0",
        "$swift_lib_version": "4.4.0", "seen": true})");
    const QList<QJsonObject> records = rows("people", 1);
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(at(records[1], "$set_once"), automatic);
    automatic.remove(QStringLiteral("seen"));
    automatic.insert(QStringLiteral("name"), QStringLiteral("Ada"));
    automatic.insert(QStringLiteral("$ios_version"), QStringLiteral("mine"));
    EXPECT_EQ(at(records[0], "$set"), automatic);
}

TEST_F(PeopleTest, WritesEachOfTheOtherActions)
{
    const auto client = startAndSettle();
    People &people = client->people();
    people.unset({"a", "b"});
    people.append({{"list", 1}});
    people.remove({{"list", 2}});
    people.unionValues({{"list", MarlpostArray{3, 4}}});
    people.trackCharge(9.5, {{"sku", "x"}});
    people.clearCharges();
    people.deleteUser();
    settle(*client);
    const QList<QJsonObject> records = rows("people", 1);
    ASSERT_EQ(records.size(), 7);
    EXPECT_EQ(at(records[0], "$unset"), QJsonArray({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(at(records[1], "$append"), object(R"({"list": 1})"));
    EXPECT_EQ(at(records[2], "$remove"), object(R"({"list": 2})"));
    EXPECT_EQ(at(records[3], "$union"), object(R"({"list": [3, 4]})"));
    EXPECT_EQ(
        at(records[4], "$append"),
        object(R"({"$transactions": {"$amount": 9.5, "$time": "2023-11-14T22:13:20.500Z", "sku": "x"}})"));
    EXPECT_EQ(at(records[5], "$set").toObject().value(QLatin1String("$transactions")), QJsonArray());
    EXPECT_EQ(at(records[6], "$delete"), QJsonObject());
}

TEST_F(PeopleTest, RecordsGroups)
{
    const LogRecord log;
    const auto client = startAndSettle();
    const std::shared_ptr<Group> group = client->getGroup("company", "Acme");
    EXPECT_EQ(client->getGroup("company", "Acme"), group);
    EXPECT_NE(client->getGroup("company", "Other"), group);
    EXPECT_EQ(log.count("groups dictionary key collision: "), 0);
    EXPECT_EQ(client->getGroup("a_b", "c")->groupKey(), "a_b");
    EXPECT_EQ(client->getGroup("a", "b_c")->groupKey(), "a");
    EXPECT_EQ(log.count("groups dictionary key collision: a_b_c"), 1);

    group->set({{"size", 3}});
    group->setOnce({{"founded", 1900}});
    group->unset("size");
    group->remove("tags", "x");
    group->unionValues("tags", {"y"});
    group->deleteGroup();
    settle(*client);
    const QList<QJsonObject> records = rows("groups");
    ASSERT_EQ(records.size(), 6);
    EXPECT_EQ(records[0], object(R"({"$token": "token", "$time": 1700000000500, "$group_key": "company",
                                      "$group_id": "Acme", "$set": {"size": 3}})"));
    EXPECT_EQ(at(records[1], "$set_once"), object(R"({"founded": 1900})"));
    EXPECT_EQ(at(records[2], "$unset"), QJsonArray({QStringLiteral("size")}));
    EXPECT_EQ(at(records[3], "$remove"), object(R"({"tags": "x"})"));
    EXPECT_EQ(at(records[4], "$union"), object(R"({"tags": ["y"]})"));
    EXPECT_EQ(at(records[5], "$delete"), QJsonObject());
}

TEST_F(PeopleTest, KeepsTheGroupsOfTheUserWithEveryEvent)
{
    const auto client = startAndSettle();
    const auto groupsAfter = [&](const char *event) {
        client->track(event);
        settle(*client);
        return lastProperties().value(QLatin1String("team"));
    };
    client->addGroup("team", "red");
    client->addGroup("team", 7);
    client->addGroup("team", "red");
    EXPECT_EQ(groupsAfter("a"), QJsonArray({QStringLiteral("red"), 7}));
    client->removeGroup("team", "red");
    EXPECT_EQ(groupsAfter("b"), QJsonArray({7}));
    client->removeGroup("team", 7);
    EXPECT_EQ(groupsAfter("c"), QJsonValue(QJsonValue::Undefined));
    client->setGroup("team", {"blue"});
    EXPECT_EQ(groupsAfter("d"), QJsonArray({QStringLiteral("blue")}));
    client->trackWithGroups("e", {{"team", "own"}, {"x", 1}}, {{"team", "green"}});
    settle(*client);
    EXPECT_EQ(lastProperties().value(QLatin1String("team")), QStringLiteral("green"));
    EXPECT_EQ(lastProperties().value(QLatin1String("x")), 1);

    QStringList actions;
    for (const QJsonObject &record : rows("people", 1)) {
        for (const QString &key : record.keys()) {
            if (record.value(key).isObject() || record.value(key).isArray())
                actions.append(key);
        }
    }
    actions.removeAll(QStringLiteral("$mp_metadata"));
    EXPECT_EQ(actions.join(QLatin1Char(' ')), QStringLiteral("$union $union $union $remove $unset $set"));
}
