#include "platform/linux/watching/InotifyFolderWatch.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <gtest/gtest.h>
#include <utime.h>

namespace quillbay::platform {
namespace {

using System = InotifyFolderWatch::System;

/// A watch over real folders. `sentinel` is a folder whose event comes after all those caused before it.
class FolderWatchTest : public ::testing::Test
{
protected:
    FolderWatchTest()
    {
        start({});
        for (const QString &folder : {m_apps, m_sentinel})
            QDir().mkpath(folder);
    }

    void start(const System &system)
    {
        m_reports.clear();
        m_watch = std::make_unique<InotifyFolderWatch>(system);
        QObject::connect(m_watch.get(), &FolderWatch::changed,
                         [this](const QString &folder) { m_reports.append(folder); });
    }

    QString path(const char *relative) const { return m_root.filePath(QString::fromUtf8(relative)); }

    static void write(const QString &file, const QByteArray &content = "x")
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << qPrintable(file);
        ASSERT_EQ(out.write(content), content.size());
    }

    static void rename(const QString &from, const QString &to)
    {
        ASSERT_EQ(::rename(qPrintable(from), qPrintable(to)), 0) << qPrintable(from);
    }

    bool waitForReport(const QString &folder)
    {
        return QTest::qWaitFor([&] { return m_reports.contains(folder); }, 5000);
    }

    /// Everything reported for what happened since the last call, the sentinel left out.
    QStringList settle()
    {
        write(m_sentinel + QStringLiteral("/sentinel"));
        EXPECT_TRUE(waitForReport(m_sentinel));
        QStringList reports = std::exchange(m_reports, {});
        reports.removeAll(m_sentinel);
        return reports;
    }

    int watch(QStringList folders) { return m_watch->watch(folders << m_sentinel) - 1; }

    QTemporaryDir m_root;
    const QString m_apps = path("apps");
    const QString m_sentinel = path("sentinel");
    std::unique_ptr<InotifyFolderWatch> m_watch;
    QStringList m_reports;
};

TEST_F(FolderWatchTest, ReportsEveryWayOfChangingAFolderOnce)
{
    const QString entry = path("apps/a.desktop");
    const QString other = path("other.desktop");
    write(other);
    ASSERT_EQ(watch({m_apps}), 1);
    const QStringList once{m_apps};

    write(entry);
    EXPECT_EQ(settle(), once) << "a file added";
    {
        QFile inPlace(entry);
        ASSERT_TRUE(inPlace.open(QIODevice::ReadWrite));
        inPlace.write("rewritten");
    }
    EXPECT_EQ(settle(), once) << "rewritten in place";
    QSaveFile saved(path("apps/saved.desktop"));
    ASSERT_TRUE(saved.open(QIODevice::WriteOnly) && saved.write("x") == 1 && saved.commit());
    EXPECT_EQ(settle(), once) << "saved under a new name";
    rename(other, entry);
    EXPECT_EQ(settle(), once) << "another file renamed over it";
    ASSERT_TRUE(QFile::setPermissions(entry, QFile::ReadOwner));
    EXPECT_EQ(settle(), once) << "permissions changed";
    rename(entry, other);
    EXPECT_EQ(settle(), once) << "moved out";
    ASSERT_TRUE(QFile::remove(path("apps/saved.desktop")));
    EXPECT_EQ(settle(), once) << "deleted";
    ASSERT_TRUE(QDir().mkdir(path("apps/A.app")));
    EXPECT_EQ(settle(), once) << "a bundle added";
    write(path("apps/A.app/inside"));
    EXPECT_EQ(settle(), QStringList()) << "a change inside a subfolder";
    for (int i = 0; i < 100; ++i)
        write(path("apps/") + QString::number(i));
    EXPECT_EQ(settle(), once) << "a hundred files at once";
    ASSERT_TRUE(QFile(path("apps/7")).open(QIODevice::ReadOnly));
    QDir(m_apps).entryList();
    EXPECT_EQ(settle(), QStringList()) << "only read";
}

TEST_F(FolderWatchTest, SkipsWhatIsNoFolderAndFindsItLater)
{
    const QString missing = path("missing");
    const QString file = path("file");
    write(file);
    ASSERT_EQ(watch({missing, m_apps, file, m_apps}), 1);

    ASSERT_TRUE(QDir().mkdir(missing));
    EXPECT_EQ(settle(), QStringList());
    // What was in it before this call may have escaped the caller, so the folder is reported.
    EXPECT_EQ(watch({missing, m_apps}), 2);
    EXPECT_EQ(settle(), QStringList{missing});
    write(missing + QStringLiteral("/a"));
    EXPECT_EQ(settle(), QStringList{missing});
}

TEST_F(FolderWatchTest, TheSameListAgainKeepsWatchesAndAShorterOneDropsThem)
{
    const QString second = path("second");
    QDir().mkpath(second);
    ASSERT_EQ(watch({m_apps, second}), 2);
    write(path("apps/before"));
    ASSERT_EQ(watch({m_apps, second}), 2);
    EXPECT_EQ(settle(), QStringList{m_apps}) << "an event from before the call is not lost";
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(watch({m_apps, second}), 2);
    EXPECT_EQ(settle(), QStringList());
    write(path("apps/after"));
    EXPECT_EQ(settle(), QStringList{m_apps});

    ASSERT_EQ(watch({second}), 1);
    write(path("apps/unwatched"));
    write(path("second/watched"));
    EXPECT_EQ(settle(), QStringList{second});
}

TEST_F(FolderWatchTest, AFolderThatGoesAndComesBackIsWatchedAgain)
{
    const QString away = path("away");
    ASSERT_EQ(watch({m_apps}), 1);
    rename(m_apps, away);
    EXPECT_EQ(settle(), QStringList{m_apps}) << "moved away";
    EXPECT_EQ(watch({m_apps}), 0);
    write(path("away/a"));
    EXPECT_EQ(settle(), QStringList()) << "changed where it is now";

    rename(away, m_apps);
    EXPECT_EQ(watch({m_apps}), 1);
    EXPECT_EQ(settle(), QStringList{m_apps}) << "back";
    write(path("apps/b"));
    EXPECT_EQ(settle(), QStringList{m_apps});

    ASSERT_TRUE(QDir(m_apps).removeRecursively());
    EXPECT_TRUE(settle().contains(m_apps)) << "deleted";
    EXPECT_EQ(watch({m_apps}), 0);
}

TEST_F(FolderWatchTest, AFolderReplacedByAnotherOfItsNameIsTheOneWatched)
{
    // The parent is what is replaced, so the watched folder itself has no event.
    const QString folder = path("parent/apps");
    QDir().mkpath(folder);
    QDir().mkpath(path("other/apps"));
    ASSERT_EQ(watch({folder}), 1);
    rename(path("parent"), path("old"));
    rename(path("other"), path("parent"));
    EXPECT_EQ(settle(), QStringList());

    EXPECT_EQ(watch({folder}), 1);
    EXPECT_EQ(settle(), QStringList{folder});
    write(path("old/apps/a"));
    EXPECT_EQ(settle(), QStringList());
    write(folder + QStringLiteral("/a"));
    EXPECT_EQ(settle(), QStringList{folder});
}

TEST_F(FolderWatchTest, TwoNamesOfOneFolderAreBothReported)
{
    const QString link = path("link");
    ASSERT_TRUE(QFile::link(m_apps, link));
    ASSERT_EQ(watch({m_apps, link}), 2);
    write(path("apps/a"));
    QStringList reports = settle();
    reports.sort();
    EXPECT_EQ(reports, (QStringList{m_apps, link}));
}

TEST_F(FolderWatchTest, AFlatpakTransactionChangesTheExportsFolder)
{
    const QString exports = path("flatpak/exports/share/applications");
    const QString stamp = path("flatpak/.changed");
    QDir().mkpath(path("flatpak"));
    EXPECT_EQ(watch({exports}), 0) << "the installation's folder does not count";
    write(path("flatpak/config"));
    EXPECT_EQ(settle(), QStringList()) << "another file of the installation";
    write(stamp);
    EXPECT_EQ(settle(), QStringList{exports}) << "first transaction, before anything was exported";

    QDir().mkpath(exports);
    EXPECT_EQ(watch({exports}), 1);
    settle();
    ASSERT_EQ(utime(qPrintable(stamp), nullptr), 0);
    EXPECT_EQ(settle(), QStringList{exports}) << "stamp touched";
    write(exports + QStringLiteral("/a.desktop"));
    EXPECT_EQ(settle(), QStringList{exports});
}

TEST_F(FolderWatchTest, AQueueThatOverflowsReportsEveryFolder)
{
    QFile limit(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    ASSERT_TRUE(limit.open(QIODevice::ReadOnly));
    const int events = limit.readAll().trimmed().toInt();
    const QString quiet = path("quiet");
    QDir().mkpath(quiet);
    ASSERT_EQ(watch({m_apps, quiet}), 2);
    // Equal events in a row are merged, so each file gets two names.
    write(path("apps/a"));
    for (int i = 0; i < events / 2; ++i)
        rename(path(i % 2 ? "apps/b" : "apps/a"), path(i % 2 ? "apps/a" : "apps/b"));
    EXPECT_TRUE(waitForReport(quiet));
    EXPECT_TRUE(m_reports.contains(m_apps));
}

int noQueue(int)
{
    errno = EMFILE;
    return -1;
}

int noWatchOnApps(int queue, const char *path, std::uint32_t mask)
{
    if (!QByteArray(path).endsWith("/apps") && !QByteArray(path).endsWith("/flatpak"))
        return inotify_add_watch(queue, path, mask);
    errno = ENOSPC;
    return -1;
}

TEST_F(FolderWatchTest, PollsWhatTheSystemHasNoWatchFor)
{
    const QString exports = path("flatpak/exports/share/applications");
    QDir().mkpath(exports);
    const std::pair<const char *, System> cases[] = {
        {"no watch", {.addWatch = noWatchOnApps, .pollInterval = std::chrono::milliseconds(20)}},
        {"no queue", {.initialise = noQueue, .pollInterval = std::chrono::milliseconds(20)}},
    };
    for (const auto &[name, system] : cases) {
        SCOPED_TRACE(name);
        start(system);
        ASSERT_EQ(watch({m_apps, exports, path("missing")}), 2);
        write(path("apps/") + QString::fromLatin1(name));
        EXPECT_TRUE(waitForReport(m_apps));
        write(path("flatpak/.changed"), name);
        ASSERT_EQ(utime(qPrintable(path("flatpak/.changed")), nullptr), 0);
        EXPECT_TRUE(waitForReport(exports));

        // A change between the last look and this call still counts.
        m_reports.clear();
        write(path("apps/second ") + QString::fromLatin1(name));
        ASSERT_EQ(watch({m_apps, exports}), 2);
        EXPECT_TRUE(waitForReport(m_apps));
        EXPECT_FALSE(m_reports.contains(exports));

        rename(m_apps, path("away"));
        m_reports.clear();
        EXPECT_TRUE(waitForReport(m_apps));
        EXPECT_EQ(watch({m_apps}), 0);
        rename(path("away"), m_apps);
    }
}

TEST_F(FolderWatchTest, ATimerRunsOnlyWhilePolling)
{
    static bool exhausted;
    exhausted = true;
    start({.addWatch = [](int queue, const char *path, std::uint32_t mask) {
        errno = ENOSPC;
        return exhausted ? -1 : inotify_add_watch(queue, path, mask);
    }});
    EXPECT_TRUE(m_watch->findChildren<QTimer *>().isEmpty());
    ASSERT_EQ(watch({m_apps}), 1);
    EXPECT_EQ(m_watch->findChildren<QTimer *>().size(), 1);
    exhausted = false;
    ASSERT_EQ(watch({m_apps}), 1);
    EXPECT_TRUE(m_watch->findChildren<QTimer *>().isEmpty());
    settle();
    write(path("apps/a"));
    EXPECT_EQ(settle(), QStringList{m_apps});
}

} // namespace
} // namespace quillbay::platform
