#include "library/AppIconLoader.h"

#include "platform/linux/icons/DesktopIconSource.h"
#include "support/FakeApplications.h"
#include "support/TestHome.h"

#include <QColor>
#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

#include <gmock/gmock.h>

namespace quillbay {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

constexpr int edge = 80;
constexpr qint64 iconBytes = edge * edge * 4;

class AppIconLoaderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        source.setColor(a, Qt::red);
        source.setColor(b, Qt::blue);
        AppIconLoader::setSource(&source);
    }
    void TearDown() override
    {
        source.gate.open();
        AppIconLoader::shutDown();
        AppIconLoader::setCacheLimit(32 * 1024 * 1024);
        AppIconLoader::setSecondLookDelay(3s);
    }

    static bool eventually(const std::function<bool()> &holds) { return QTest::qWaitFor(holds, 10000); }
    static QColor color(const AppIconLoader &loader) { return loader.icon().pixelColor(edge / 2, edge / 2); }
    static bool isGeneric(const AppIconLoader &loader)
    {
        return loader.icon().cacheKey() == AppIconLoader::getGenericAppIcon(loader.pixelSize()).cacheKey();
    }
    static std::unique_ptr<AppIconLoader> loaderOf(const QString &path, int pixelSize = edge)
    {
        auto loader = std::make_unique<AppIconLoader>();
        loader->setPixelSize(pixelSize);
        loader->setPath(path);
        return loader;
    }
    /// Shows the icon of `path` once, so that it is cached.
    void show(const QString &path)
    {
        const auto loader = loaderOf(path);
        ASSERT_TRUE(eventually([&] { return !isGeneric(*loader); })) << path.toStdString();
    }
    static QStringList paths(int count)
    {
        QStringList list;
        for (int i = 0; i < count; ++i)
            list << QStringLiteral("/prefetched/%1").arg(i);
        return list;
    }

    const QString a = QStringLiteral("/apps/a");
    const QString b = QStringLiteral("/apps/b");
    const QString c = QStringLiteral("/apps/c");
    quillbay::testing::FakeIconSource source;
};

TEST_F(AppIconLoaderTest, ShowsTheGenericIconUntilTheRealOneIsThere)
{
    source.gate.close();
    AppIconLoader loader;
    QSignalSpy changes(&loader, &AppIconLoader::iconChanged);
    EXPECT_TRUE(loader.icon().isNull());
    loader.setPath(a);
    EXPECT_TRUE(loader.icon().isNull());
    loader.setPixelSize(edge);
    EXPECT_TRUE(isGeneric(loader));
    EXPECT_EQ(loader.icon().size(), QSize(edge, edge));
    EXPECT_EQ(changes.size(), 1);
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(loader) == Qt::red; }));
    EXPECT_EQ(changes.size(), 2);
    loader.setPath({});
    EXPECT_TRUE(loader.icon().isNull());
}

TEST_F(AppIconLoaderTest, ACachedIconIsThereAtOnceAndReadOnce)
{
    show(a);
    AppIconLoader loader;
    loader.setPixelSize(edge);
    QSignalSpy changes(&loader, &AppIconLoader::iconChanged);
    loader.setPath(a);
    EXPECT_EQ(color(loader), QColor(Qt::red));
    EXPECT_EQ(changes.size(), 1);
    EXPECT_THAT(source.askedPaths(), ElementsAre(a));
    loader.setPixelSize(2 * edge);
    EXPECT_EQ(color(loader), QColor(Qt::red)) << "the old size stays until the new one is there";
    ASSERT_TRUE(eventually([&] { return loader.icon().width() == 2 * edge; }));
    EXPECT_THAT(source.askedPaths(), ElementsAre(a, a));
}

TEST_F(AppIconLoaderTest, AReusedTileNeverShowsTheIconOfItsFormerPath)
{
    source.gate.close();
    const auto loader = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(a); }));
    loader->setPath(b);
    bool sawFormer = false;
    QObject::connect(loader.get(), &AppIconLoader::iconChanged, loader.get(),
                     [&] { sawFormer = sawFormer || color(*loader) == Qt::red; });
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(*loader) == Qt::blue; }));
    loader->setPath(c);
    EXPECT_TRUE(isGeneric(*loader)) << "not the picture of the path before";
    ASSERT_TRUE(eventually([&] { return !isGeneric(*loader); }));
    EXPECT_FALSE(sawFormer);
}

TEST_F(AppIconLoaderTest, LoadersOfOneIconShareItsReading)
{
    source.gate.close();
    AppIconLoader::prefetchIcons({c}, edge);
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(c); }));
    const auto first = loaderOf(a);
    const auto second = loaderOf(a);
    const auto third = loaderOf(c); // being prefetched
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return !isGeneric(*first) && !isGeneric(*second) && !isGeneric(*third); }));
    EXPECT_EQ(first->icon().cacheKey(), second->icon().cacheKey());
    EXPECT_EQ(source.askedPaths().count(a), 1);
    EXPECT_EQ(source.askedPaths().count(c), 1);
}

TEST_F(AppIconLoaderTest, ATileOvertakesAPrefetch)
{
    source.gate.close();
    AppIconLoader::prefetchIcons(paths(50), edge);
    ASSERT_TRUE(eventually([&] { return !source.askedPaths().isEmpty(); }));
    const auto loader = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(a); }));
    EXPECT_LE(source.askedPaths().size(), 3) << "two prefetching threads at most, and the tile";
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(*loader) == Qt::red && source.askedPaths().size() == 51; }));
}

TEST_F(AppIconLoaderTest, PassedTilesAreNotRead)
{
    source.gate.close();
    AppIconLoader loader;
    loader.setPixelSize(edge);
    const QStringList passed = paths(40);
    for (const QString &path : passed)
        loader.setPath(path);
    loader.setPath(a);
    for (int i = 0; i < 40; ++i)
        loaderOf(QStringLiteral("/gone/%1").arg(i));
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(loader) == Qt::red; }));
    EXPECT_LE(source.askedPaths().size(), 5) << "one for each thread, and the last";
}

TEST_F(AppIconLoaderTest, ALoaderMayGoWhileItsIconIsRead)
{
    source.gate.close();
    auto gone = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(a); }));
    gone.reset();
    const auto stays = loaderOf(b);
    auto victim = loaderOf(b);
    QObject::connect(stays.get(), &AppIconLoader::iconChanged, stays.get(), [&] { victim.reset(); });
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(*stays) == Qt::blue; }));
    EXPECT_EQ(victim, nullptr);
    ASSERT_TRUE(eventually([&] { return color(*loaderOf(a)) == Qt::red; }))
        << "what was read is kept all the same";
    EXPECT_EQ(source.askedPaths().count(a), 1);
}

TEST_F(AppIconLoaderTest, TheIconShownLongestAgoGivesWay)
{
    AppIconLoader::setCacheLimit(2 * iconBytes);
    show(a);
    show(b);
    show(a);
    show(c); // b goes
    EXPECT_FALSE(isGeneric(*loaderOf(a)));
    EXPECT_FALSE(isGeneric(*loaderOf(c)));
    show(b);
    EXPECT_THAT(source.askedPaths(), ElementsAre(a, b, c, b));
}

TEST_F(AppIconLoaderTest, APrefetchFillsTheCacheAndDrivesNothingOut)
{
    AppIconLoader::setCacheLimit(3 * iconBytes + 64);
    show(a);
    AppIconLoader::prefetchIcons(paths(10), edge);
    AppIconLoader::prefetchIcons({b}, 1); // is small enough for what is left, and comes after the first
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(b); }));
    EXPECT_EQ(source.askedPaths().size(), 4);
    for (const QString &path : {a, paths(2).first(), paths(2).last()})
        EXPECT_TRUE(eventually([&] { return !isGeneric(*loaderOf(path)); })) << path.toStdString();
    EXPECT_EQ(source.askedPaths().size(), 4);
}

TEST_F(AppIconLoaderTest, AnotherThemeReplacesThePictureWhenTheNewOneIsThere)
{
    const auto loader = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return color(*loader) == Qt::red; }));
    source.gate.close();
    source.setColor(a, Qt::green);
    AppIconLoader::invalidate();
    EXPECT_EQ(color(*loader), QColor(Qt::red));
    EXPECT_TRUE(isGeneric(*loaderOf(a))) << "nothing is cached any more";
    source.gate.open();
    ASSERT_TRUE(eventually([&] { return color(*loader) == Qt::green; }));
}

TEST_F(AppIconLoaderTest, AReadingFromBeforeTheChangeOfThemeIsIgnored)
{
    quillbay::testing::FakeIconSource other;
    other.setColor(a, Qt::green);
    source.gate.close();
    const auto loader = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return source.askedPaths().contains(a); }));
    AppIconLoader::setSource(&other);
    ASSERT_TRUE(eventually([&] { return color(*loader) == Qt::green; }));
    source.gate.open();
    show(b); // behind it in the queue of results
    EXPECT_EQ(color(*loader), QColor(Qt::green));
    EXPECT_EQ(color(*loaderOf(a)), QColor(Qt::green));
    AppIconLoader::shutDown();
}

TEST_F(AppIconLoaderTest, AnInterruptedPrefetchStartsAgain)
{
    source.gate.close();
    AppIconLoader::prefetchIcons(paths(20), edge);
    ASSERT_TRUE(eventually([&] { return !source.askedPaths().isEmpty(); }));
    const QString first = source.askedPaths().first();
    AppIconLoader::invalidate();
    source.gate.open();
    EXPECT_TRUE(eventually([&] { return source.askedPaths().count(first) == 2; }));
}

class MissingIconTest : public AppIconLoaderTest
{
protected:
    void SetUp() override
    {
        AppIconLoaderTest::SetUp();
        AppIconLoader::setSecondLookDelay(1h);
        AppIconLoader::prefetchIcons({c}, edge);
        tile = loaderOf(a);
        ASSERT_TRUE(eventually([&] { return color(*tile) == Qt::red; }));
        source.setColor(a, QColor());
        AppIconLoader::invalidate();
        ASSERT_TRUE(eventually([&] { return isGeneric(*tile); }));
        EXPECT_TRUE(isGeneric(*loaderOf(a)));
        source.setColor(a, Qt::green); // installed
    }

    std::unique_ptr<AppIconLoader> tile;
};

TEST_F(MissingIconTest, IsAskedForAgainAfterAScan)
{
    show(b);
    EXPECT_EQ(source.askedPaths().count(a), 2) << "only then";
    AppIconLoader::prefetchIcons({b, c}, edge);
    EXPECT_TRUE(eventually([&] { return color(*tile) == Qt::green; }));
    EXPECT_EQ(source.askedPaths().count(a), 3);
    EXPECT_EQ(source.askedPaths().count(b), 1) << "icons that are there are left alone";
}

TEST_F(MissingIconTest, IsAskedForOnceMoreALittleLater)
{
    QSignalSpy changes(tile.get(), &AppIconLoader::iconChanged);
    AppIconLoader::setSecondLookDelay(1ms);
    ASSERT_TRUE(eventually([&] { return color(*tile) == Qt::green; }));
    EXPECT_EQ(changes.size(), 1);

    source.setColor(a, QColor());
    AppIconLoader::invalidate();
    ASSERT_TRUE(eventually([&] { return isGeneric(*tile); }));
    show(b);
    EXPECT_EQ(source.askedPaths().count(a), 4) << "and then no more";
}

TEST_F(AppIconLoaderTest, AnIconInstalledAfterItsApplicationIsShown)
{
    const quillbay::testing::TestHome home;
    quillbay::testing::FakeApplicationSource applications;
    platform::ApplicationDetails details;
    details.icon = QStringLiteral("late");
    applications.setDetails(a, details);
    const platform::DesktopIconSource desktop(applications);
    AppIconLoader::setSource(&desktop);
    const auto tile = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return applications.readPaths().contains(a); }));
    const QString file = home.write(QStringLiteral(".local/share/icons/hicolor/96x96/apps/late.png"), {});
    QImage picture(edge, edge, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(file));
    EXPECT_TRUE(eventually([&] {
        AppIconLoader::prefetchIcons({a}, edge);
        return color(*tile) == Qt::red;
    }));
    AppIconLoader::shutDown();
}

TEST_F(AppIconLoaderTest, WaitsForASource)
{
    AppIconLoader::shutDown();
    const auto loader = loaderOf(a);
    EXPECT_EQ(loader->icon().size(), QSize(edge, edge));
    AppIconLoader::prefetchIcons({b}, edge);
    AppIconLoader::setSource(&source);
    EXPECT_TRUE(eventually([&] { return color(*loader) == Qt::red && source.askedPaths().contains(b); }));
}

/// Knows how many are asking at the moment.
class CountingSource final : public platform::IconSource
{
public:
    quillbay::testing::FakeIconSource fake;
    mutable std::atomic<int> asking = 0;

    QImage icon(const QString &path, int size) const override
    {
        ++asking;
        const QImage image = fake.icon(path, size);
        --asking;
        return image;
    }
    QImage documentIcon(const QString &, int) const override { return {}; }
    QImage genericIcon(int size) const override { return fake.genericIcon(size); }
};

TEST_F(AppIconLoaderTest, AfterShutDownNobodyAsksTheSource)
{
    const auto shown = loaderOf(a);
    ASSERT_TRUE(eventually([&] { return color(*shown) == Qt::red; }));
    std::unique_ptr<AppIconLoader> waiting;
    {
        CountingSource passing;
        passing.fake.gate.close();
        AppIconLoader::setSource(&passing);
        AppIconLoader::prefetchIcons(paths(200), edge);
        waiting = loaderOf(b);
        ASSERT_TRUE(eventually([&] { return passing.fake.askedPaths().contains(b); }));
        std::thread opener([&] { passing.fake.gate.open(); });
        AppIconLoader::shutDown();
        EXPECT_EQ(passing.asking, 0);
        opener.join();
    }
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(color(*shown), QColor(Qt::red)) << "what is shown stays";
    EXPECT_EQ(waiting->icon().size(), QSize(edge, edge));
}

} // namespace
} // namespace quillbay
