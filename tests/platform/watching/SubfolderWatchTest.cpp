#include "platform/linux/applications/LinuxApplicationSource.h"
#include "platform/linux/watching/InotifyFolderWatch.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <gmock/gmock.h>
#include <utime.h>

namespace quillbay::platform {
namespace {

using ::testing::Contains;
using ::testing::Not;

/// The folders that a scan finds, watched as the library watches them.
class SubfolderWatchTest : public ::testing::Test
{
protected:
    SubfolderWatchTest()
    {
        m_environment.home = m_home.path();
        m_environment.dataHome = m_home.path(QStringLiteral("data"));
        QObject::connect(&m_watch, &FolderWatch::changed,
                         [this](const QString &folder) { m_reports.append(folder); });
    }

    QString path(const char *below) const
    {
        return m_home.path(QStringLiteral("data/applications/") + QString::fromUtf8(below));
    }
    void add(const char *below) const
    {
        m_home.write(QStringLiteral("data/applications/") + QString::fromUtf8(below),
                     "[Desktop Entry]\nType=Application\nName=N\nExec=true\n");
    }
    void watchAfter(const LinuxApplicationSource &source)
    {
        source.scan();
        m_watch.watch(source.folders());
    }
    bool reports(const char *below)
    {
        const QString folder = path(below);
        const bool reported = QTest::qWaitFor([&] { return m_reports.contains(folder); }, 5000);
        m_reports.clear();
        return reported;
    }

    quillbay::testing::TestHome m_home;
    ApplicationEnvironment m_environment;
    InotifyFolderWatch m_watch;
    QStringList m_reports;
};

TEST_F(SubfolderWatchTest, SeesAnEntryInASubfolderWheneverThatWasMade)
{
    add("wine/Programs/a.desktop");
    ASSERT_TRUE(QFile::link(path("wine"), path("wine/Programs/circle")));
    const LinuxApplicationSource source(m_environment);
    const QStringList atStart = source.folders();
    m_watch.watch(atStart);
    watchAfter(source);
    EXPECT_EQ(source.folders(), atStart + QStringList({path("wine"), path("wine/Programs")}));
    add("wine/Programs/b.desktop");
    EXPECT_TRUE(reports("wine/Programs"));

    add("wine/Games/Deep/c.desktop");
    EXPECT_TRUE(reports("wine"));
    watchAfter(source);
    add("wine/Games/Deep/d.desktop");
    EXPECT_TRUE(reports("wine/Games/Deep"));

    ASSERT_TRUE(QDir(path("wine")).removeRecursively());
    EXPECT_TRUE(reports("wine/Games/Deep"));
    watchAfter(source);
    EXPECT_EQ(source.folders(), atStart);
}

TEST_F(SubfolderWatchTest, AFolderThatChangedAfterItWasReadIsReportedOnceItIsWatched)
{
    add("old/a.desktop");
    add("new/a.desktop");
    const LinuxApplicationSource source(m_environment);
    m_watch.watch(source.folders());
    source.scan();
    const utimbuf hourAgo{time(nullptr) - 3600, time(nullptr) - 3600};
    ASSERT_EQ(utime(qPrintable(path("old")), &hourAgo), 0);
    add("new/b.desktop");
    m_watch.watch(source.folders());
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_reports.contains(path("new")); }, 5000));
    EXPECT_THAT(m_reports, Not(Contains(path("old")))) << "as at every start";
    m_reports.clear();
    m_watch.watch(source.folders());
    add("old/b.desktop");
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_reports.contains(path("old")); }, 5000));
    EXPECT_THAT(m_reports, Not(Contains(path("new")))) << "it is in the list already";
}

TEST_F(SubfolderWatchTest, HasABound)
{
    for (int i = 0; i < 300; ++i)
        QDir().mkpath(path("many/") + QString::number(i));
    const LinuxApplicationSource source(m_environment);
    const qsizetype atStart = source.folders().size();
    source.scan();
    EXPECT_EQ(source.folders().size(), atStart + 256);
}

} // namespace
} // namespace quillbay::platform
