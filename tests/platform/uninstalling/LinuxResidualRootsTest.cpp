#include "platform/linux/uninstalling/LinuxResidualRoots.h"

#include "platform/linux/uninstalling/EntryProgram.h"
#include "platform/linux/uninstalling/MountPoints.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace quillbay::platform {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

TEST(MountPoints, AreUnescaped)
{
    EXPECT_THAT(
        mountPointsIn("36 35 98:0 / / rw - ext4 /dev/a rw\n"
                      "37 36 98:1 /sub /mnt/a\\040b\\134c\\012\\011\xff rw,noatime master:1 - ext4 x y\n"
                      "38 36 98:1 / /end\\04\n"
                      "39 36 98:1 /short\n"
                      "\n"),
        ElementsAre("/", "/mnt/a b\\c\n\t\xff", "/end\\04"));
    const auto current = currentMountPoints();
    ASSERT_TRUE(current);
    EXPECT_THAT(*current, IsSupersetOf({QByteArray("/"), QByteArray("/proc")}));
}

TEST(EntryProgram, IsTheProgramThatTheLineStarts)
{
    const auto program = [](const char *exec) {
        ApplicationDetails details;
        details.exec = QString::fromUtf8(exec);
        return programOf(details);
    };
    EXPECT_EQ(program("/usr/bin/paint %U"), QStringLiteral("/usr/bin/paint"));
    EXPECT_EQ(program("\"/opt/my paint/run\" --new"), QStringLiteral("/opt/my paint/run"));
    EXPECT_EQ(program("env -i -u HOME A=b C=/d/e /snap/bin/paint %f"), QStringLiteral("/snap/bin/paint"));
    EXPECT_EQ(program("/usr/bin/env paint"), QStringLiteral("paint"));
    for (const char *none : {"", "env A=b", "\"open", "paint %z"})
        EXPECT_EQ(program(none), QString()) << none;

    for (const char *runner : {"", "sh", "bash", "python3.11", "flatpak", "snap", "Wine", "java", "env"})
        EXPECT_TRUE(runsOthers(QLatin1String(runner))) << runner;
    for (const char *own : {"paint", "shotwell", "javapaint", "snapper", "pythonista", "fishing"})
        EXPECT_FALSE(runsOthers(QLatin1String(own))) << own;
}

TEST(EntryProgram, OwnFoldersBearTheProgramsName)
{
    const QStringList names{QStringLiteral("paint"), QStringLiteral("Paint Studio"), QString()};
    const auto folder = [&](const char *program) { return ownFolderOf(program, "/home/u", names); };
    EXPECT_EQ(folder("/home/u/opt/Paint-2.1/bin/run"), "/home/u/opt/Paint-2.1");
    EXPECT_EQ(folder("/home/u/paint studio/lib/x64"), "/home/u/paint studio");
    EXPECT_EQ(folder("/home/u/paint/usr/lib64/run"), "/home/u/paint");
    EXPECT_EQ(folder("/home/u/a/paint2/run"), "/home/u/a/paint2");
    for (const char *none :
         {"/home/u/run", "/home/u/bin/paint", "/home/u/Downloads/paint", "/home/u/painting/run",
          "/home/u/paint/tools/run", "/opt/paint/run", "/home/u2/paint/run", "/home/paint", "", "/", "paint"})
        EXPECT_EQ(folder(none), "") << none;
    EXPECT_EQ(ownFolderOf("/home/paint/bin/run", "/home/paint", names), "");
}

TEST(LinuxResidualLayout, FollowsTheEnvironment)
{
    const ::quillbay::testing::TestHome home;
    const QByteArray base = QFile::encodeName(home.path());
    qputenv("XDG_CONFIG_HOME", base + "//conf/./");
    qputenv("XDG_STATE_HOME", "relative");
    qputenv("XDG_CACHE_HOME", base + "/../cache");
    const LinuxBaseFolders folders = LinuxBaseFolders::fromEnvironment();
    EXPECT_EQ(folders.configHome, base + "/conf");
    EXPECT_EQ(folders.stateHome, base + "/.local/state");
    EXPECT_EQ(folders.cacheHome, base + "/.cache");
    const ResidualLayout layout =
        LinuxResidualRoots(folders, ApplicationEnvironment::fromEnvironment()).layout();
    EXPECT_THAT(layout.preferences, ElementsAre(base + "/conf", "/etc/xdg"));
    EXPECT_THAT(layout.sharedFolders,
                IsSupersetOf({base, base + "/conf", base + "/.config", base + "/conf/autostart",
                              base + "/.local/share/flatpak", base + "/usr/share", base + "/run",
                              base + "/Documents", QByteArray("/var/crash")}));
    EXPECT_THAT(layout.groupContainers + layout.receipts, IsEmpty());
}

class Facts : public ::testing::Test
{
protected:
    QString entry(const QString &folder, const char *name, const QByteArray &exec)
    {
        return home.write(folder + QLatin1String(name) + QStringLiteral(".desktop"),
                          "[Desktop Entry]\nType=Application\nName=Some\nExec=" + exec + '\n');
    }
    QString userEntry(const char *name, const QByteArray &exec)
    {
        return entry(QStringLiteral(".local/share/applications/"), name, exec);
    }
    QString program(const char *path)
    {
        const QString file = home.write(QLatin1String(path), "#!/bin/sh\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ExeOwner);
        return file;
    }
    ApplicationFacts facts(const QString &path, const char *name = "Some Paint") const
    {
        return LinuxResidualRoots(LinuxBaseFolders::fromEnvironment(),
                                  ApplicationEnvironment::fromEnvironment())
            .factsOf(path, QLatin1String(name));
    }
    QByteArray bytes(const char *path) const { return QFile::encodeName(home.path(QLatin1String(path))); }

    ::quillbay::testing::TestHome home;
    const QString shared = QStringLiteral("usr/share/applications/");
};

TEST_F(Facts, NamesComeFromTheIdentifierAndTheProgram)
{
    const QString paint = entry(shared, "org.example.Paint", "/usr/bin/paint-studio %U");
    ApplicationFacts found = facts(paint);
    EXPECT_EQ(found.identifier, QStringLiteral("org.example.Paint"));
    EXPECT_THAT(found.wholeNames, ElementsAre(QStringLiteral("Paint"), QStringLiteral("paint-studio")));
    EXPECT_THAT(found.programNames, ElementsAre(QStringLiteral("paint-studio")));
    EXPECT_THAT(found.ownFiles, IsEmpty());

    entry(shared, "paint-viewer", "paint-studio --view");
    EXPECT_THAT(facts(paint).wholeNames, ElementsAre(QStringLiteral("Paint"))) << "both start it";
    EXPECT_THAT(facts(entry(shared, "game", "flatpak run org.example.Game")).wholeNames,
                ElementsAre(QStringLiteral("game")));
    found = facts(home.path(QStringLiteral("gone.desktop")));
    EXPECT_TRUE(found.identifier.isEmpty() && found.wholeNames.isEmpty() && found.ownFiles.isEmpty());
}

TEST_F(Facts, SelfInstalledProgramsAreTheirFileOrTheirOwnFolder)
{
    const QByteArray image = QFile::encodeName(program("Applications/Paint-1.AppImage"));
    EXPECT_THAT(facts(userEntry("image", image + " --no-sandbox %U")).ownFiles, ElementsAre(image))
        << "although the image is listed as an application too";
    EXPECT_THAT(facts(entry(shared, "image2", image)).ownFiles, IsEmpty()) << "not the user's own entry";

    program("opt/some paint-2/bin/run");
    EXPECT_THAT(facts(userEntry("run", '"' + bytes("opt/some paint-2/bin/run") + '"')).ownFiles,
                ElementsAre(bytes("opt/some paint-2")));
    home.write(QStringLiteral("opt/some paint-2/.git/HEAD"), "x");
    EXPECT_THAT(facts(home.path(QStringLiteral(".local/share/applications/run.desktop"))).ownFiles,
                ElementsAre(bytes("opt/some paint-2/bin/run")));

    program("opt/sketch/sketch");
    ASSERT_TRUE(QDir().mkpath(home.path(QStringLiteral(".local/bin"))));
    ASSERT_TRUE(QFile::link(home.path(QStringLiteral("opt/sketch/sketch")),
                            home.path(QStringLiteral(".local/bin/sketch"))));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", bytes(".local/bin") + ":relative:" + path);
    EXPECT_THAT(facts(userEntry("sketch", "env A=b sketch %f")).ownFiles,
                ElementsAre(bytes(".local/bin/sketch"), bytes("opt/sketch")));
    qputenv("PATH", path);

    program("Documents/documents");
    EXPECT_THAT(facts(userEntry("documents", bytes("Documents/documents"))).ownFiles,
                ElementsAre(bytes("Documents/documents")));
    program("browser/browser");
    userEntry("webapp", bytes("browser/browser") + " --app-id=1");
    EXPECT_THAT(facts(userEntry("browser", bytes("browser/browser"))).ownFiles, IsEmpty())
        << "another application needs it";
    EXPECT_THAT(facts(userEntry("gone", bytes("gone/gone"))).ownFiles, IsEmpty());
}

} // namespace

} // namespace quillbay::platform
