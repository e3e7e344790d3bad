#include "platform/linux/icons/IconThemeIndex.h"

#include "platform/icons/Fixtures.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::platform {
namespace {

using quillbay::testing::TestHome;
using quillbay::testing::ThemeFolder;
using quillbay::testing::themeIndex;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const ThemeFolder apps48{"48x48/apps", "Size=48\nType=Fixed\nContext=Applications"};
const ThemeFolder apps96{"96x96/apps", "Size=96\nType=Fixed\nContext=Applications"};
const ThemeFolder scalableApps{"scalable/apps",
                               "Size=64\nMinSize=8\nMaxSize=512\nType=Scalable\nContext=Applications"};
const ThemeFolder devices80{"80x80/devices", "Size=80\nType=Fixed\nContext=Devices"};

class IconThemeIndexTest : public ::testing::Test
{
protected:
    /// Adds files with any content: the index looks at names alone. Paths are below the system's data folder.
    void files(std::initializer_list<const char *> paths)
    {
        for (const char *path : paths)
            home.write(shared(path), "x");
    }
    void theme(const char *name, const std::vector<ThemeFolder> &folders, const QByteArray &inherits = {})
    {
        home.write(shared("icons/%1/index.theme").arg(QLatin1String(name)), themeIndex(folders, inherits));
    }
    /// What is found, as paths below the data folder.
    QStringList find(const char *name, int edge = 48)
    {
        QStringList found;
        for (const QString &file : index.find(QString::fromUtf8(name), edge))
            found << QDir(home.path()).relativeFilePath(file).remove(QStringLiteral("usr/share/"));
        return found;
    }
    static QString shared(const char *path) { return QStringLiteral("usr/share/") + QString::fromUtf8(path); }
    static QString text(const char *latin) { return QString::fromLatin1(latin); }

    TestHome home;
    IconThemeIndex index{IconThemeIndex::standardFolders(), std::chrono::milliseconds(0)};
};

TEST_F(IconThemeIndexTest, PrefersTheThemeThenWhatItInheritsThenHicolorThenUnthemedPictures)
{
    theme("Child", {apps48}, "Missing,Parent");
    theme("Parent", {apps48}, "Grandparent");
    theme("Grandparent", {apps48});
    theme("hicolor", {apps48});
    files({"pixmaps/app.png", "icons/app.xpm", "icons/hicolor/48x48/apps/app.png",
           "icons/Grandparent/48x48/apps/app.png", "icons/Parent/48x48/apps/app.png",
           "icons/Child/48x48/apps/app.png", "icons/hicolor/48x48/apps/other.png", "pixmaps/picture.svg"});
    index.setTheme(text("Child"));
    EXPECT_THAT(find("app"),
                ElementsAre(text("icons/Child/48x48/apps/app.png"), text("icons/Parent/48x48/apps/app.png"),
                            text("icons/Grandparent/48x48/apps/app.png"),
                            text("icons/hicolor/48x48/apps/app.png"), text("icons/app.xpm"),
                            text("pixmaps/app.png")));
    EXPECT_THAT(find("other"), ElementsAre(text("icons/hicolor/48x48/apps/other.png")));
    EXPECT_THAT(find("picture"), ElementsAre(text("pixmaps/picture.svg")));
}

TEST_F(IconThemeIndexTest, MatchesWholeNamesOnly)
{
    theme("hicolor", {apps48});
    files({"icons/hicolor/48x48/apps/foo.png", "icons/hicolor/48x48/apps/foo-bar.png",
           "icons/hicolor/48x48/apps/org.example.Foo.svg"});
    EXPECT_THAT(find("foo-bar-baz"), IsEmpty());
    EXPECT_THAT(find("foo-ba"), IsEmpty());
    EXPECT_THAT(find("Foo"), IsEmpty());
    EXPECT_THAT(find("org.example"), IsEmpty());
    EXPECT_THAT(find("org.example.Foo"), ElementsAre(text("icons/hicolor/48x48/apps/org.example.Foo.svg")));
    for (const char *name : {"foo", "foo.png", "foo.svg", "foo.xpm", "foo.PNG"})
        EXPECT_THAT(find(name), ElementsAre(text("icons/hicolor/48x48/apps/foo.png"))) << name;
    for (const char *name : {"", ".png", "..", "apps/foo", "../apps/foo"})
        EXPECT_THAT(find(name), IsEmpty()) << name;
}

TEST_F(IconThemeIndexTest, OrdersSizesForTheWantedEdgeAndApplicationsBeforeOtherContexts)
{
    theme("hicolor", {apps48, apps96, scalableApps, devices80});
    files({"icons/hicolor/48x48/apps/a.png", "icons/hicolor/96x96/apps/a.png",
           "icons/hicolor/80x80/devices/a.png", "icons/hicolor/48x48/apps/b.png",
           "icons/hicolor/scalable/apps/b.svg", "icons/hicolor/80x80/devices/c.png"});
    EXPECT_THAT(find("a", 80),
                ElementsAre(text("icons/hicolor/96x96/apps/a.png"), text("icons/hicolor/48x48/apps/a.png"),
                            text("icons/hicolor/80x80/devices/a.png")));
    EXPECT_EQ(find("a", 160).first(), text("icons/hicolor/96x96/apps/a.png"));
    EXPECT_EQ(find("b", 48).first(), text("icons/hicolor/48x48/apps/b.png"));
    EXPECT_EQ(find("b", 100).first(), text("icons/hicolor/scalable/apps/b.svg"));
    EXPECT_THAT(find("c", 48), ElementsAre(text("icons/hicolor/80x80/devices/c.png")));
}

TEST_F(IconThemeIndexTest, OwnFoldersWinOverTheSystemsAndNeedNoIndexFileOfTheirOwn)
{
    theme("hicolor", {apps48});
    files({"icons/hicolor/48x48/apps/app.png"});
    home.write(text(".local/share/icons/hicolor/48x48/apps/app.png"), "x");
    home.write(text(".icons/hicolor/48x48/apps/app.png"), "x");
    EXPECT_THAT(find("app"), ElementsAre(text(".icons/hicolor/48x48/apps/app.png"),
                                         text(".local/share/icons/hicolor/48x48/apps/app.png"),
                                         text("icons/hicolor/48x48/apps/app.png")));
}

TEST_F(IconThemeIndexTest, AFolderLinkedForDoubleDensityCountsOnce)
{
    theme("hicolor",
          {apps48, {"48x48@2x/apps", "Size=48\nScale=2\nType=Fixed\nContext=Applications"}, apps96});
    files({"icons/hicolor/48x48/apps/app.png", "icons/hicolor/96x96/apps/app.png"});
    ASSERT_TRUE(QFile::link(text("48x48"), home.path(shared("icons/hicolor/48x48@2x"))));
    EXPECT_THAT(find("app", 96), ElementsAre(text("icons/hicolor/96x96/apps/app.png"),
                                             text("icons/hicolor/48x48/apps/app.png")));
}

TEST_F(IconThemeIndexTest, EndsWhenThemesInheritEachOther)
{
    theme("A", {apps48}, "A,B,hicolor");
    theme("B", {apps48}, "A,../../etc,.");
    files({"icons/B/48x48/apps/app.png"});
    index.setTheme(text("A"));
    EXPECT_THAT(find("app"), ElementsAre(text("icons/B/48x48/apps/app.png")));
    EXPECT_THAT(find("missing"), IsEmpty());
}

TEST_F(IconThemeIndexTest, FollowsTheChosenThemeAndReplacesOneThatIsNotInstalled)
{
    for (const char *name : {"Adwaita", "Other", "Zebra"})
        theme(name, {apps48});
    files({"icons/Adwaita/48x48/apps/app.png", "icons/Other/48x48/apps/app.png",
           "icons/Zebra/48x48/apps/app.png"});
    EXPECT_THAT(find("app"), ElementsAre(text("icons/Adwaita/48x48/apps/app.png")));
    index.setTheme(text("Zebra"));
    EXPECT_THAT(find("app"), ElementsAre(text("icons/Zebra/48x48/apps/app.png")));
    index.setTheme(text("Not installed"));
    EXPECT_THAT(find("app"), ElementsAre(text("icons/Adwaita/48x48/apps/app.png")));
    ASSERT_TRUE(QDir(home.path(shared("icons/Adwaita"))).removeRecursively());
    index.refresh();
    EXPECT_THAT(find("app"), ElementsAre(text("icons/Other/48x48/apps/app.png")));
}

TEST_F(IconThemeIndexTest, AMissSeesWhatWasInstalledMeanwhile)
{
    theme("hicolor", {apps48, apps96});
    files({"icons/hicolor/48x48/apps/app.png"});
    ASSERT_EQ(find("app").size(), 1);
    EXPECT_THAT(find("new"), IsEmpty());
    files({"icons/hicolor/48x48/apps/new.png"}); // into a listed folder
    EXPECT_EQ(find("new").size(), 1);
    EXPECT_THAT(find("newer"), IsEmpty());
    files({"icons/hicolor/96x96/apps/newer.png"}); // into one that did not exist
    EXPECT_EQ(find("newer").size(), 1);
    home.write(text(".local/share/icons/hicolor/48x48/apps/own.png"), "x"); // into a new place for themes
    EXPECT_EQ(find("own").size(), 1);
    files({"pixmaps/unthemed.png"});
    EXPECT_EQ(find("unthemed").size(), 1);
}

TEST_F(IconThemeIndexTest, MissesInARowLookAtTheFoldersOnce)
{
    IconThemeIndex patient(IconThemeIndex::standardFolders(), std::chrono::hours(1));
    theme("hicolor", {apps48});
    EXPECT_THAT(patient.find(text("app"), 48), IsEmpty());
    files({"icons/hicolor/48x48/apps/app.png"});
    EXPECT_THAT(patient.find(text("app"), 48), IsEmpty());
    patient.refresh();
    EXPECT_EQ(patient.find(text("app"), 48).size(), 1);
}

TEST_F(IconThemeIndexTest, IgnoresWhatIsNoPictureFile)
{
    theme("hicolor", {apps48});
    files({"icons/hicolor/48x48/apps/text.txt", "icons/hicolor/48x48/apps/.png",
           "icons/hicolor/48x48/apps/folder.png/x"});
    const QByteArray fifo = QFile::encodeName(home.path(shared("icons/hicolor/48x48/apps/fifo.png")));
    ASSERT_EQ(::mkfifo(fifo.constData(), 0600), 0);
    for (const char *name : {"text", "folder", "fifo"})
        EXPECT_THAT(find(name), IsEmpty()) << name;
}

TEST_F(IconThemeIndexTest, AnswersManyThreadsWhileTheThemeChanges)
{
    for (const char *name : {"A", "B"})
        theme(name, {apps48});
    files({"icons/A/48x48/apps/app.png", "icons/B/48x48/apps/app.png"});
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, &wrong] {
            for (int i = 0; i < 50; ++i)
                wrong += index.find(text("app"), 48).size() != 1;
        });
    }
    for (int i = 0; i < 50; ++i)
        index.setTheme(i % 2 ? text("A") : text("B"));
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace quillbay::platform
