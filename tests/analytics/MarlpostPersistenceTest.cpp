#include "analytics/MarlpostPersistence.h"

#include "analytics/JSONHandler.h"
#include "foundation/PreferenceStore.h"
#include "support/TestHome.h"

#include <gmock/gmock.h>

namespace quillbay {

namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr auto Events = PersistenceType::Events;
constexpr auto People = PersistenceType::People;
constexpr auto Groups = PersistenceType::Groups;

class MarlpostPersistenceTest : public ::testing::Test
{
protected:
    MarlpostPersistence::Places places() const
    {
        return {home.path(QStringLiteral("cache")), home.path(QStringLiteral("preferences.sqlite"))};
    }
    MarlpostPersistence::Options options(bool keepsUnsent = false)
    {
        return {[this] { return ++time; }, keepsUnsent};
    }
    static std::vector<std::string> eventsOf(const StoredEntities &rows)
    {
        std::vector<std::string> names;
        for (const StoredEntity &row : rows)
            names.push_back(JSONHandler::readFacts(row.json)->event);
        return names;
    }

    testing::TestHome home;
    double time = 0;
    MarlpostPersistence persistence{"name", places(), options()};
};

TEST_F(MarlpostPersistenceTest, ExcludedAutomaticEventsGoForGood)
{
    for (const char *name : {"$ae_first", "own", "$ae_second", "later"})
        persistence.saveEntity({{"event", name}}, Events);
    EXPECT_THAT(eventsOf(persistence.loadEntitiesInBatch(Events)), SizeIs(4));
    EXPECT_THAT(eventsOf(persistence.loadEntitiesInBatch(Events, 2, false, true)),
                ElementsAre("own", "later"));
    EXPECT_THAT(eventsOf(persistence.loadEntitiesInBatch(Events)), ElementsAre("own", "later"));
}

TEST_F(MarlpostPersistenceTest, PeopleWithoutAnIdNeitherGoOutNorBlockOthers)
{
    for (int i = 0; i < 60; ++i)
        persistence.saveEntity({{"$set", MarlpostDictionary()}}, People);
    persistence.saveEntity({{"$distinct_id", "a"}}, People);
    persistence.saveEntity({{"$distinct_id", "held"}}, People, true);
    EXPECT_THAT(persistence.loadEntitiesInBatch(People, 50), SizeIs(1));
    persistence.identifyPeople();
    EXPECT_THAT(persistence.loadEntitiesInBatch(People, 50), SizeIs(2));
}

TEST_F(MarlpostPersistenceTest, WithoutAServiceTheNewestOfAKindStay)
{
    MarlpostPersistence unsent("other", places(), options(true));
    const std::vector<MarlpostDictionary> many(std::size_t(MarlpostPersistence::RowsKeptUnsent) - 1,
                                               MarlpostDictionary{{"event", "old"}});
    ASSERT_TRUE(unsent.saveEntities(many, Events));
    unsent.saveEntity({{"group", "a"}}, Groups);
    for (const char *name : {"a", "b", "c"})
        unsent.saveEntity({{"event", name}}, Events);
    auto names = eventsOf(unsent.loadEntitiesInBatch(Events));
    ASSERT_THAT(names, SizeIs(std::size_t(MarlpostPersistence::RowsKeptUnsent)));
    EXPECT_THAT(std::vector(names.end() - 4, names.end()), ElementsAre("old", "a", "b", "c"));
    EXPECT_THAT(unsent.loadEntitiesInBatch(Groups), SizeIs(1));

    // One that has a service keeps all.
    MarlpostPersistence sending("other", places(), options(false));
    sending.saveEntity({{"event", "d"}}, Events);
    EXPECT_THAT(sending.loadEntitiesInBatch(Events),
                SizeIs(std::size_t(MarlpostPersistence::RowsKeptUnsent) + 1));
}

TEST_F(MarlpostPersistenceTest, SmallValuesSurviveUnderTheirKeys)
{
    EXPECT_EQ(persistence.loadIdentity(), MarlpostIdentity());
    EXPECT_EQ(persistence.loadOptOutStatusFlag(), std::nullopt);
    EXPECT_TRUE(persistence.loadSuperProperties().isEmpty());

    const MarlpostIdentity identity = {"é id", "people", std::nullopt, "user", "alias", false};
    const MarlpostDictionary properties = {{"plan", "free"}, {"big", std::uint64_t(1) << 63}};
    persistence.saveIdentity({"x", "x", "gone", "x", "x", true});
    persistence.saveIdentity(identity);
    persistence.saveOptOutStatusFlag(true);
    persistence.saveSuperProperties(properties);
    persistence.saveTimedEvents({{"event", 12.5}});

    MarlpostPersistence again("name", places(), options());
    EXPECT_EQ(again.loadIdentity(), identity);
    EXPECT_EQ(again.loadOptOutStatusFlag(), true);
    EXPECT_EQ(again.loadSuperProperties(), properties);
    EXPECT_EQ(again.loadTimedEvents(), (MarlpostDictionary{{"event", 12.5}}));
    EXPECT_EQ(MarlpostPersistence("second", places(), options()).loadIdentity(), MarlpostIdentity());

    const PreferenceStore suite = PreferenceStore(places().preferencesFile).suite(QStringLiteral("Marlpost"));
    EXPECT_EQ(suite.string(QStringLiteral("Marlpost-name-MPDistinctID")), QStringLiteral("é id"));
    EXPECT_EQ(suite.boolean(QStringLiteral("Marlpost-name-MPHadPersistedDistinctId")), false);
    EXPECT_EQ(suite.boolean(QStringLiteral("Marlpost-name-OptOutStatus")), true);
    EXPECT_EQ(suite.data(QStringLiteral("Marlpost-name-timedEvents")), QByteArray(R"({"event":12.5})"));

    again.deleteMPUserDefaultsData();
    EXPECT_EQ(persistence.loadIdentity(), MarlpostIdentity());
    EXPECT_TRUE(persistence.loadTimedEvents().isEmpty());
}

} // namespace

} // namespace quillbay
