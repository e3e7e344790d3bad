#include "library/AppFinder.h"

#include "library/AppIconLoader.h"
#include "support/TestLibrary.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::FakeApplicationSource;
using quillbay::testing::FakePlatform;
using quillbay::testing::TestLibrary;

namespace {

platform::InstalledApplication app(const char *name, const char *path)
{
    return FakeApplicationSource::application(QString::fromUtf8(path), QString::fromUtf8(name));
}

class AppFinderTest : public ::testing::Test
{
protected:
    AppFinderTest()
    {
        fakes.applications->setFolders(
            {QStringLiteral("/Applications"), QStringLiteral("/usr/share/applications")});
    }

    bool scan() { return library.scan(); }
    QStringList paths() const
    {
        QStringList list;
        for (const AppItem &item : finder.apps())
            list.append(item.path);
        return list;
    }

    TestLibrary library;
    FakePlatform &fakes = library.fakes;
    AppFinder &finder = *library.finder;
};

} // namespace

TEST_F(AppFinderTest, SortsByNameAndKeepsTheOrderOfEqualNames)
{
    fakes.applications->setApplications({app("beta", "/2/x.app"), app("Zed", "/a"), app("alpha", "/b"),
                                         app("Beta", "/1/x.app"), app("Alpha", "/c")});
    ASSERT_TRUE(scan());
    EXPECT_EQ(paths().join(QLatin1Char(' ')), QStringLiteral("/b /c /2/x.app /1/x.app /a"));
}

TEST_F(AppFinderTest, NamesCategoriesByWhatIsDeclared)
{
    auto bundle = app("Bundle", "/b");
    bundle.categoryType = QStringLiteral("public.app-category.social-networking");
    fakes.applications->setApplications(
        {FakeApplicationSource::application(QStringLiteral("/a"), QStringLiteral("A"),
                                            QStringLiteral("Office")),
         bundle, app("Plain", "/c")});
    ASSERT_TRUE(scan());
    QStringList categories;
    for (const AppItem &item : finder.apps())
        categories.append(item.category);
    EXPECT_EQ(categories.join(QLatin1Char(' ')), QStringLiteral("Office Social-Networking Other"));
}

TEST_F(AppFinderTest, AnnouncesBeforeTheListChangesAndEndsByClearingIsScanning)
{
    fakes.applications->setApplications({app("A", "/a")});
    QStringList log;
    QObject::connect(&finder, &ObservableObject::objectWillChange, [&] {
        const auto text =
            QStringLiteral("will %1 %2").arg(finder.apps().size()).arg(int(finder.isScanning()));
        if (log.value(log.size() - 1) != text) // the lists that follow are announced too
            log.append(text);
    });
    QObject::connect(&finder, &AppFinder::appsChanged, [&] { log.append(QStringLiteral("apps")); });
    QObject::connect(&finder, &AppFinder::isScanningChanged, [&] { log.append(QStringLiteral("scanning")); });
    ASSERT_TRUE(scan());
    EXPECT_EQ(log.join(QLatin1Char(',')),
              QStringLiteral("will 0 0,scanning,will 0 1,apps,will 1 1,scanning"));
}

TEST_F(AppFinderTest, ScansOffTheMainThreadAndOverlapping)
{
    fakes.applications->scanGate.close();
    finder.scanApps();
    finder.scanApps();
    QSignalSpy finished(&finder, &AppFinder::scanFinished);
    ASSERT_TRUE(QTest::qWaitFor([&] { return fakes.applications->scanCount() == 2; }));
    EXPECT_TRUE(finder.isScanning());
    fakes.applications->scanGate.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 2; }));
    EXPECT_FALSE(finder.isScanning());
}

TEST_F(AppFinderTest, ABurstOfChangesGivesOneScanASecondAfterTheLast)
{
    ASSERT_TRUE(scan());
    finder.startMonitoring();
    EXPECT_EQ(fakes.folderWatch->folders, fakes.applications->folders());
    QSignalSpy finished(&finder, &AppFinder::scanFinished);
    QElapsedTimer sinceLast;
    int left = 10;
    QTimer burst;
    QObject::connect(&burst, &QTimer::timeout, [&] {
        fakes.folderWatch->trigger(QStringLiteral("/Applications"));
        sinceLast.start();
        if (--left == 0)
            burst.stop();
    });
    burst.start(50);
    ASSERT_TRUE(finished.wait(8000));
    EXPECT_EQ(left, 0);
    EXPECT_GE(sinceLast.elapsed(), AppFinder::rescanDelay - 2);
    EXPECT_EQ(fakes.applications->scanCount(), 2);
    // Folders that have appeared meanwhile are watched from now on.
    EXPECT_EQ(fakes.folderWatch->watchCount, 2);
}

TEST_F(AppFinderTest, FetchesIconsAheadOnlyOnceItKnowsTheirSize)
{
    fakes.applications->setApplications({app("A", "/icons/a"), app("B", "/icons/b")});
    AppIconLoader::setSource(fakes.icons);
    ASSERT_TRUE(scan());
    EXPECT_TRUE(fakes.icons->askedPaths().isEmpty());
    finder.setIconPixelSize(80);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fakes.icons->askedPaths().size() == 2; }));
    fakes.applications->setApplications({app("A", "/icons/a"), app("C", "/icons/c")});
    ASSERT_TRUE(scan());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return fakes.icons->askedPaths().contains(QLatin1String("/icons/c")); }));
    AppIconLoader::shutDown();
}

TEST(AppFinder, CanEndDuringAScan)
{
    TestLibrary library;
    FakePlatform &fakes = library.fakes;
    fakes.applications->setApplications({app("A", "/a")});
    fakes.applications->scanGate.close();
    library.finder->scanApps();
    ASSERT_TRUE(QTest::qWaitFor([&] { return fakes.applications->scanCount() == 1; }));
    fakes.applications->scanGate.open();
    library.finder.reset();
    QCoreApplication::processEvents();
}
