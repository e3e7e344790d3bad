#include "analytics/AnalyticsManager.h"

#include "analytics/ClientFixture.h"

#include <QVariant>

using namespace quillbay;
using quillbay::testing::ClientFixture;

namespace {

class AnalyticsManagerTest : public ClientFixture
{
protected:
    /// One run of the program, from its start to its end.
    struct Run
    {
        explicit Run(AnalyticsManagerTest &test, MarlpostSurroundings around)
            : preferences(test.surroundings().places.preferencesFile)
            , manager(preferences, std::move(around), clients)
        {
            manager.initialize();
        }
        ~Run()
        {
            settle(*clients.mainInstance());
            clients.mainInstance()->setLoggingEnabled(false);
        }

        PreferenceStore preferences;
        MarlpostManager clients;
        AnalyticsManager manager;
    };

    std::unique_ptr<Run> run() { return std::make_unique<Run>(*this, surroundings()); }
    QStringList recorded(const Run &run) const
    {
        settle(*run.clients.mainInstance());
        return events(AnalyticsManager::marlpostToken);
    }
    QJsonObject properties(int index) const
    {
        return rows("events", 0, AnalyticsManager::marlpostToken)
            .value(index)
            .value(QLatin1String("properties"))
            .toObject();
    }
};

} // namespace

TEST_F(AnalyticsManagerTest, RecordsTheFirstStartAndTheLaterOnes)
{
    std::unique_ptr<Run> first = run();
    EXPECT_EQ(recorded(*first), QStringList({QStringLiteral("$identify"), QStringLiteral("First App Open"),
                                             QStringLiteral("App Opened")}));
    const QString id = first->preferences.string(QStringLiteral("mp_distinct_id")).value_or(QString());
    EXPECT_EQ(id.size(), 36);
    EXPECT_EQ(id, id.toUpper());
    EXPECT_EQ(first->preferences.boolean(QStringLiteral("mp_has_opened_before")), true);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(properties(i).value(QLatin1String("distinct_id")), id);
    EXPECT_EQ(properties(2).value(QLatin1String("platform")), QStringLiteral("mac"));
    EXPECT_EQ(properties(2).value(QLatin1String("app_version")), QStringLiteral("1.2"));
    first.reset();

    const std::unique_ptr<Run> second = run();
    EXPECT_EQ(recorded(*second).mid(3), QStringList(QStringLiteral("App Opened")));
    EXPECT_EQ(properties(3).value(QLatin1String("distinct_id")), id);
}

TEST_F(AnalyticsManagerTest, TakesTheIdOfALink)
{
    std::unique_ptr<Run> first = run();
    const auto count = recorded(*first).size();
    for (const char *url : {"quillbay://open", "quillbay://open?", "quillbay://open?uid",
                            "quillbay://open?uid=", "quillbay://open?uid=%20",
                            "quillbay://open?UID=x&other=y", "quillbay://open#uid=x", "no url ?uid=x", ""})
        first->manager.handleURL(QString::fromLatin1(url));
    EXPECT_EQ(recorded(*first).size(), count);

    first->manager.handleURL(QStringLiteral("quillbay://open?a=b&uid&uid=ada%20l%2B&uid=other&source=mine"));
    EXPECT_EQ(recorded(*first).mid(count),
              QStringList({QStringLiteral("$identify"), QStringLiteral("Attribution Link Captured")}));
    const QJsonObject captured = properties(int(count) + 1);
    EXPECT_EQ(captured.value(QLatin1String("distinct_id")), QStringLiteral("ada l+"));
    EXPECT_EQ(captured.value(QLatin1String("source")), QStringLiteral("url_scheme"));
    EXPECT_EQ(captured.value(QLatin1String("platform")), QStringLiteral("mac"));
    first.reset();

    const std::unique_ptr<Run> second = run();
    EXPECT_EQ(recorded(*second).last(), QStringLiteral("App Opened"));
    EXPECT_EQ(properties(int(count) + 2).value(QLatin1String("distinct_id")), QStringLiteral("ada l+"));
}

TEST_F(AnalyticsManagerTest, AddsTheCommonPropertiesToEveryEvent)
{
    MarlpostSurroundings around = surroundings();
    around.appVersion = {};
    Run program(*this, around);
    program.manager.trackEvent(QStringLiteral("Event"), {{QStringLiteral("platform"), QStringLiteral("own")},
                                                         {QStringLiteral("text"), QStringLiteral("ä")},
                                                         {QStringLiteral("count"), 3},
                                                         {QStringLiteral("share"), 0.5},
                                                         {QStringLiteral("is"), true}});
    EXPECT_EQ(recorded(program).last(), QStringLiteral("Event"));
    const QJsonObject all = properties(3);
    EXPECT_EQ(all.value(QLatin1String("platform")), QStringLiteral("mac"));
    EXPECT_EQ(all.value(QLatin1String("app_version")), QStringLiteral("1.0"));
    EXPECT_EQ(all.value(QLatin1String("$app_version_string")), QStringLiteral("Unknown"));
    EXPECT_EQ(all.value(QLatin1String("text")), QStringLiteral("ä"));
    EXPECT_EQ(all.value(QLatin1String("count")), 3);
    EXPECT_EQ(all.value(QLatin1String("share")), 0.5);
    EXPECT_EQ(all.value(QLatin1String("is")), true);
}
