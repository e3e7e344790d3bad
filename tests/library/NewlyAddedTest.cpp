#include "library/NewlyAdded.h"

#include "support/TestLibrary.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationSource;
using quillbay::testing::names;
using quillbay::testing::TestLibrary;

namespace {

const QString firstSeenKey = QStringLiteral("AppFirstSeenDates");
const QString newlyAddedKey = QStringLiteral("NewlyAddedAppURLs");
constexpr double day = 24 * 60 * 60;
constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

QString url(const QString &name)
{
    return QLatin1String("file:///apps/") + name;
}

class NewlyAddedApps : public ::testing::Test
{
protected:
    struct Dated
    {
        const char *name;
        double created = unknown;
        double modified = unknown;
    };

    bool install(std::initializer_list<Dated> apps)
    {
        std::vector<platform::InstalledApplication> found;
        for (const Dated &app : apps) {
            const QString name = QString::fromUtf8(app.name);
            found.push_back(FakeApplicationSource::application(QLatin1String("/apps/") + name, name));
            library.fakes.applications->setDates(found.back().path, {app.created, app.modified});
        }
        library.fakes.applications->setApplications(std::move(found));
        return library.scan();
    }
    void reload() { library.workspaces->setActiveWorkspaceID(library.workspaces->activeWorkspaceID()); }
    QJsonObject record() const
    {
        return library.preferences.dictionary(firstSeenKey).value_or(QJsonObject());
    }
    QString newApps() const { return names(library.finder->newlyAddedApps()); }

    TestLibrary library;
    const double start = library.now;
};

} // namespace

TEST_F(NewlyAddedApps, TheLastInstalledStandsOnTopFor30Days)
{
    ASSERT_TRUE(install({{"a"}, {"c"}, {"d"}}));
    EXPECT_EQ(newApps(), QStringLiteral("a c d"));
    EXPECT_EQ(record(), (QJsonObject{{url(QStringLiteral("a")), start},
                                     {url(QStringLiteral("c")), start},
                                     {url(QStringLiteral("d")), start}}));
    ASSERT_TRUE(install({{"a"}, {"c"}}));
    EXPECT_EQ(record().size(), 2) << "who went away has lost its date";
    library.now = start + 5 * day;
    ASSERT_TRUE(install({{"a"}, {"b"}, {"c"}}));
    EXPECT_EQ(newApps(), QStringLiteral("b a c"));
    EXPECT_EQ(library.preferences.stringArray(newlyAddedKey),
              QStringList({url(QStringLiteral("b")), url(QStringLiteral("a")), url(QStringLiteral("c"))}));

    library.now = start + 30 * day;
    reload();
    EXPECT_EQ(newApps(), QStringLiteral("b a c"));
    library.now += 1;
    reload();
    EXPECT_EQ(newApps(), QStringLiteral("b"));
    library.restart();
    ASSERT_TRUE(install({{"a"}, {"b"}, {"d"}}));
    EXPECT_EQ(newApps(), QStringLiteral("d b")) << "back again is new again";
    library.now = start;
    reload();
    EXPECT_EQ(newApps(), QStringLiteral("d b a")) << "the clock was set back";
}

TEST_F(NewlyAddedApps, AFileOfTheLast30DaysIsNewHoweverLongItIsKnown)
{
    const double now = start + 100 * day;
    const auto all = {Dated{"created", now - day},
                      {"edge", now - 30 * day},
                      {"old", now - 31 * day, now - day},
                      {"written", unknown, now - 2 * day},
                      {"writtenOld", unknown, now - 31 * day},
                      {"unknown"}};
    ASSERT_TRUE(install(all));
    EXPECT_EQ(library.finder->newlyAddedApps().size(), 6);
    library.now = now;
    ASSERT_TRUE(install(all));
    EXPECT_EQ(newApps(), QStringLiteral("created edge written"));
    library.now += 1;
    reload();
    EXPECT_EQ(newApps(), QStringLiteral("created written"));
}

TEST_F(NewlyAddedApps, OfOneScanTheLastCreatedComesFirst)
{
    const auto order = [this](double distance) {
        library.preferences.setDictionary(firstSeenKey, {{url(QStringLiteral("a")), start},
                                                         {url(QStringLiteral("b")), start + distance},
                                                         {url(QStringLiteral("c")), start + distance},
                                                         {url(QStringLiteral("d")), start + distance}});
        EXPECT_TRUE(install({{"a", 200}, {"b", unknown, 300}, {"c", 100}, {"d", 100}}));
        return newApps();
    };
    EXPECT_EQ(order(0), QStringLiteral("a c d b"));
    EXPECT_EQ(order(0.5), QStringLiteral("a c d b"));
    EXPECT_EQ(order(1), QStringLiteral("a c d b"));
    EXPECT_EQ(order(1.5), QStringLiteral("c d b a"));
    EXPECT_EQ(order(-1.5), QStringLiteral("a c d b"));
}

TEST_F(NewlyAddedApps, ADamagedRecordBeginsAnew)
{
    ASSERT_TRUE(install({{"a"}, {"b"}}));
    const QJsonObject fresh = record();
    library.preferences.setDictionary(
        firstSeenKey,
        {{url(QStringLiteral("a")), 1.0}, {url(QStringLiteral("b")), QStringLiteral("yesterday")}});
    reload();
    EXPECT_EQ(record(), fresh);
    library.preferences.setString(firstSeenKey, QStringLiteral("{}"));
    library.preferences.setDictionary(newlyAddedKey, {});
    reload();
    EXPECT_EQ(record(), fresh);
    EXPECT_EQ(newApps(), QStringLiteral("a b"));
    EXPECT_EQ(library.preferences.stringArray(newlyAddedKey)->size(), 2);
}

/// What is kept from the last time must not hide what someone else has written.
TEST_F(NewlyAddedApps, EachSwitchLooksAtWhatIsStored)
{
    ASSERT_TRUE(install({{"a"}, {"b"}}));
    QSignalSpy changes(library.finder.get(), &AppFinder::newlyAddedAppsChanged);
    reload();
    EXPECT_EQ(changes.count(), 2) << "found and read back, each announced";
    PreferenceStore other(library.home.filePath(QStringLiteral("preferences.sqlite")));
    other.setDictionary(firstSeenKey, {{url(QStringLiteral("a")), 1.0}, {url(QStringLiteral("b")), start}});
    reload();
    EXPECT_EQ(newApps(), QStringLiteral("b"));
    other.remove(newlyAddedKey);
    reload();
    EXPECT_EQ(library.preferences.stringArray(newlyAddedKey), QStringList(url(QStringLiteral("b"))));
}
