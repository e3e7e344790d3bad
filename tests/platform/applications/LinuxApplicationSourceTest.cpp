#include "platform/linux/applications/LinuxApplicationSource.h"

#include "support/TestHome.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::platform {

// What a failed test prints.
void PrintTo(const InstalledApplication &application, std::ostream *out)
{
    *out << application.path.toStdString();
}

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

const QByteArray PlistHead = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>";
const QByteArray PlistTail = "</dict></plist>";

class LinuxApplicationSourceTest : public ::testing::Test
{
protected:
    LinuxApplicationSourceTest()
    {
        m_environment.home = m_home.path(QStringLiteral("home"));
        m_environment.dataHome = m_home.path(QStringLiteral("data"));
        m_environment.dataDirs = {m_home.path(QStringLiteral("one")), m_home.path(QStringLiteral("two"))};
        m_environment.systemBundleDirs = {m_home.path(QStringLiteral("Applications")),
                                          m_home.path(QStringLiteral("System/Applications"))};
    }

    QString entry(const char *path, const QByteArray &lines = "Name=Plain\n")
    {
        return m_home.write(QString::fromUtf8(path),
                            "[Desktop Entry]\nType=Application\nExec=true\n" + lines);
    }

    QString bundle(const char *path, const QByteArray &keys)
    {
        const QString plist = m_home.write(QString::fromUtf8(path) + QStringLiteral("/Contents/Info.plist"),
                                           PlistHead + keys + PlistTail);
        return plist.chopped(qsizetype(qstrlen("/Contents/Info.plist")));
    }

    std::vector<InstalledApplication> scan() const { return LinuxApplicationSource(m_environment).scan(); }

    std::vector<std::string> scannedNames() const
    {
        std::vector<std::string> names;
        for (const InstalledApplication &application : scan())
            names.push_back(application.name.toStdString());
        return names;
    }

    testing::TestHome m_home;
    ApplicationEnvironment m_environment;
};

TEST_F(LinuxApplicationSourceTest, FoldersAreBundleFoldersThenEntryFoldersNoneTwice)
{
    qputenv("HOME", "/h");
    qputenv("XDG_DATA_HOME", "relative/is/ignored");
    qputenv("XDG_DATA_DIRS", "/a/:/b::relative:/var/lib/flatpak/exports/share/:/a");
    const QStringList folders = LinuxApplicationSource::fromEnvironment().folders();
    EXPECT_THAT(folders.toVector(),
                ElementsAre(QStringLiteral("/Applications"), QStringLiteral("/System/Applications"),
                            QStringLiteral("/h/Applications"), QStringLiteral("/h/.local/share/applications"),
                            QStringLiteral("/a/applications"), QStringLiteral("/b/applications"),
                            QStringLiteral("/var/lib/flatpak/exports/share/applications"),
                            QStringLiteral("/h/.local/share/flatpak/exports/share/applications"),
                            QStringLiteral("/var/lib/snapd/desktop/applications")));
    qunsetenv("XDG_DATA_DIRS");
    EXPECT_TRUE(LinuxApplicationSource::fromEnvironment().folders().contains(
        QStringLiteral("/usr/share/applications")));
}

TEST_F(LinuxApplicationSourceTest, BundlesAreDirectChildrenWithTheExactExtension)
{
    bundle("Applications/Games.app",
           "<key>LSApplicationCategoryType</key><string>public.app-category.games</string>");
    bundle("Applications/No Type.v2.app", "<key>CFBundleName</key><string>Other name</string>");
    bundle("Applications/Empty.app", "<key>LSApplicationCategoryType</key><string/>");
    bundle("Applications/Number.app", "<key>LSApplicationCategoryType</key><integer>1</integer>");
    bundle("Applications/folder/Deeper.app", "");
    bundle("Applications/Capital.APP", "");
    bundle("Applications/.Hidden.app", "");
    bundle("Applications/.app", "");
    m_home.write(QStringLiteral("Applications/No Bundle.app"), "a file");
    m_home.write(QStringLiteral("Applications/Image.AppImage"), "not in this folder");
    QDir().mkpath(m_home.path(QStringLiteral("Applications/No List.app")));
    bundle("System/Applications/Games.app", "");
    bundle("home/Applications/Own.app", "");

    std::map<std::string, QString> types;
    for (const InstalledApplication &application : scan()) {
        types[application.path.mid(m_home.path().size() + 1).toStdString()] = application.categoryType;
        EXPECT_TRUE(application.category.isNull());
        EXPECT_EQ(application.name + QStringLiteral(".app"), application.path.section(u'/', -1));
    }
    const std::map<std::string, QString> expected{
        {"Applications/Games.app", QStringLiteral("public.app-category.games")},
        {"Applications/No Type.v2.app", {}},
        {"Applications/Empty.app", QStringLiteral("")},
        {"Applications/Number.app", {}},
        {"Applications/No Bundle.app", {}},
        {"Applications/No List.app", {}},
        {"System/Applications/Games.app", {}},
        {"home/Applications/Own.app", {}},
    };
    EXPECT_EQ(types, expected);
    EXPECT_TRUE(types["Applications/No List.app"].isNull());
    EXPECT_FALSE(types["Applications/Empty.app"].isNull());
}

TEST_F(LinuxApplicationSourceTest, ImagesOfTheUsersFolder)
{
    const QString image = m_home.write(QStringLiteral("home/Applications/Some Tool-1.2.AppImage"), "\x7f"
                                                                                                   "ELF");
    m_home.write(QStringLiteral("home/Applications/.Hidden.AppImage"), "");
    QDir().mkpath(m_home.path(QStringLiteral("home/Applications/Folder.AppImage")));
    const auto found = scan();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].path, image);
    EXPECT_EQ(found[0].name, QStringLiteral("Some Tool-1.2"));
    EXPECT_EQ(found[0].category, QStringLiteral("Other"));

    const auto details = LinuxApplicationSource(m_environment).read(image);
    ASSERT_TRUE(details);
    EXPECT_EQ(details->executable, image);
    EXPECT_EQ(details->name, QStringLiteral("Some Tool-1.2"));
    EXPECT_TRUE(details->identifier.isEmpty() && details->exec.isEmpty());
}

TEST_F(LinuxApplicationSourceTest, EntriesComeFolderByFolderAndEarlierOnesShadowLaterOnes)
{
    const QString first = entry("data/applications/a.desktop", "Name=First\nCategories=Utility;Game;\n");
    entry("one/applications/a.desktop", "Name=Shadowed\n");
    entry("one/applications/kde/sub/b.desktop", "Name=Nested\n");
    entry("two/applications/kde-sub-b.desktop", "Name=Same id\n");
    entry("data/applications/c.desktop", "Name=Deleted\nHidden=true\n");
    entry("two/applications/c.desktop", "Name=Shadowed by a deletion\n");
    entry("two/applications/d.desktop", "Name=Last\n");
    entry("two/applications/d.desktop.bak", "Name=No entry\n");
    EXPECT_THAT(scannedNames(), ElementsAre("First", "Nested", "Last"));
    const InstalledApplication found = scan().front();
    EXPECT_EQ(found.path, first);
    EXPECT_EQ(found.category, QStringLiteral("Games"));
    EXPECT_TRUE(found.categoryType.isNull());
}

TEST_F(LinuxApplicationSourceTest, TellsWhenTheFileOfEachWasMadeAndWritten)
{
    const double start = double(QDateTime::currentSecsSinceEpoch());
    const QString real = entry("elsewhere/target.desktop");
    QDir().mkpath(m_home.path(QStringLiteral("data/applications")));
    QFile::link(real, m_home.path(QStringLiteral("data/applications/link.desktop")));
    const QStringList files{entry("data/applications/a.desktop"), real, bundle("Applications/B.app", ""),
                            m_home.write(QStringLiteral("home/Applications/I.AppImage"), "")};
    constexpr time_t written = 1'000'000'000;
    for (const QString &file : files) {
        const timespec times[] = {{written, 0}, {written, 500'000'000}};
        ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times, 0), 0);
    }
    const auto found = scan();
    ASSERT_EQ(found.size(), 4U);
    for (const InstalledApplication &application : found) {
        const FileDates dates = LinuxApplicationSource(m_environment).dates(application.path);
        EXPECT_EQ(dates.modified, written + 0.5) << application.path.toStdString();
        EXPECT_TRUE(std::isnan(dates.created) || (dates.created >= start - 1 && dates.created < start + 600))
            << dates.created;
    }
    EXPECT_TRUE(
        std::isnan(LinuxApplicationSource(m_environment).dates(QStringLiteral("/not/there")).modified));
}

TEST_F(LinuxApplicationSourceTest, ManyEntriesKeepTheirOrderAndTheirKeysSortThem)
{
    for (int i = 0; i < 700; ++i)
        entry(("one/applications/e" + std::to_string(i) + ".desktop").c_str(),
              "Name=" + QByteArray(i % 2 ? "b" : "A") + "\n");
    const auto first = scan();
    ASSERT_EQ(first.size(), 700U);
    for (int again = 0; again < 5; ++again) {
        const auto next = scan();
        EXPECT_TRUE(std::equal(first.begin(), first.end(), next.begin(), next.end(),
                               [](const auto &a, const auto &b) { return a.path == b.path; }));
    }
    auto sorted = first;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto &a, const auto &b) { return a.sortKey < b.sortKey; });
    EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                               [](const auto &a, const auto &b) { return a.name < b.name; }));
}

TEST_F(LinuxApplicationSourceTest, ReadsWhatLaunchingAnEntryNeeds)
{
    m_environment.locales = {"de"};
    const QString path =
        entry("one/applications/kde/app.desktop",
              "Exec=app \\\\\"a\\s\\\\\" %U\nName=Plain\nName[de]=Deutsch\nIcon=app-icon\nPath=/tmp\n"
              "Terminal=true\nDBusActivatable=true\nStartupNotify=false\nNoDisplay=true\n");
    const LinuxApplicationSource source(m_environment);
    const auto details = source.read(path);
    ASSERT_TRUE(details);
    EXPECT_EQ(details->identifier, QStringLiteral("kde-app"));
    EXPECT_EQ(details->icon, QStringLiteral("app-icon"));
    EXPECT_EQ(details->exec, QStringLiteral("app \\\"a \\\" %U"));
    EXPECT_EQ(details->name, QStringLiteral("Deutsch"));
    EXPECT_EQ(details->workingDirectory, QStringLiteral("/tmp"));
    EXPECT_TRUE(details->dbusActivatable && details->terminal);
    EXPECT_EQ(details->startupNotify, false);
    EXPECT_TRUE(details->executable.isEmpty());

    EXPECT_EQ(source.read(entry("elsewhere/x.y.desktop"))->identifier, QStringLiteral("x.y"));
    EXPECT_EQ(
        source.read(entry("one/applications/f.desktop", "X-Flatpak=org.example.F\nName=F\n"))->identifier,
        QStringLiteral("org.example.F"));
    EXPECT_FALSE(source.read(m_home.path(QStringLiteral("one/applications/gone.desktop"))));
    EXPECT_FALSE(
        source.read(m_home.write(QStringLiteral("link.desktop"), "[Desktop Entry]\nType=Link\nName=x\n")));
}

TEST_F(LinuxApplicationSourceTest, ReadsWhatLaunchingABundleNeeds)
{
    const LinuxApplicationSource source(m_environment);
    const QString full =
        bundle("Applications/Full.v1.app",
               "<key>CFBundleExecutable</key><string>run</string><key>CFBundleIdentifier</key>"
               "<string>org.example.Full</string><key>CFBundleIconFile</key><string>Icon.2x</string>");
    const auto details = source.read(full);
    ASSERT_TRUE(details);
    EXPECT_EQ(details->name, QStringLiteral("Full.v1"));
    EXPECT_EQ(details->identifier, QStringLiteral("org.example.Full"));
    EXPECT_EQ(details->executable, full + QStringLiteral("/Contents/MacOS/run"));
    EXPECT_EQ(details->icon, full + QStringLiteral("/Contents/Resources/Icon.2x"));

    const QString plain =
        bundle("Applications/Plain.app", "<key>CFBundleIconFile</key><string>Icon</string>");
    EXPECT_EQ(source.read(plain)->icon, plain + QStringLiteral("/Contents/Resources/Icon.icns"));
    EXPECT_TRUE(source.read(plain)->executable.isEmpty());
    QDir().mkpath(m_home.path(QStringLiteral("Applications/Bare.app")));
    EXPECT_EQ(source.read(m_home.path(QStringLiteral("Applications/Bare.app")))->name,
              QStringLiteral("Bare"));
    EXPECT_FALSE(source.read(m_home.path(QStringLiteral("Applications/Gone.app"))));
}

} // namespace
} // namespace quillbay::platform
