#include "elevate/ProtectedFolders.h"

#include "elevate/FileFixture.h"
#include "elevate/FileMark.h"
#include "elevate/MountTable.h"

namespace quillbay::elevate {

using ::quillbay::testing::FileTest;

TEST(ProtectedFolders, ThoseAndAllAboveAndThePackagesTrees)
{
    ProtectedFolders folders = standardFolders();
    addHome(folders, "/srv/people/jo");
    addHome(folders, "/");
    addHome(folders, "");
    for (const char *path : {"/",
                             "",
                             "relative",
                             "/etc",
                             "/opt",
                             "/home",
                             "/home/jo",
                             "/etc/xdg",
                             "/etc/xdg/autostart",
                             "/usr/share",
                             "/usr/local",
                             "/usr/lib",
                             "/var",
                             "/var/lib",
                             "/var/lib/dpkg",
                             "/var/lib/dpkg/info/a.list",
                             "/proc/1/fd",
                             "/var/crash",
                             "/srv",
                             "/srv/people",
                             "/srv/people/jo",
                             "/srv/people/jo/.config",
                             "/srv/people/jo/.local",
                             "/srv/people/jo/.local/share",
                             "/srv/people/jo/.local/share/Trash",
                             "/srv/people/jo/.cache",
                             "/srv/people/jo/Documents",
                             "/srv/people/jo/.var/app",
                             "/etc/xdg/../xdg",
                             "/opt/./a",
                             "/opt//a",
                             "/opt/a/"})
        EXPECT_TRUE(isProtected(folders, path)) << path;
    for (const char *path : {"/opt/program", "/etc/xdg/program", "/etc/xdg/autostart/program.desktop",
                             "/var/crash/program.crash", "/home/jo/a", "/srv/people/jo/.config/program",
                             "/srv/people/jo/.cache/program", "/srv/people/joanna/a",
                             "/srv/people/jo/.local/share/Trash/files/program", "/var/lib/dpkg-like/a",
                             "/Applications/Program.app", "/srv/people/jo/...", "/etc/xdg/autostart/..a"})
        EXPECT_FALSE(isProtected(folders, path)) << path;
}

TEST_F(FileTest, AHomeIsKnownByWhatItIs)
{
    ProtectedFolders folders;
    std::filesystem::create_directory_symlink(outside, folder + "/home");
    addHome(folders, folder + "/home");
    EXPECT_TRUE(isProtected(folders, folder + "/home"));
    EXPECT_TRUE(isProtected(folders, outside));
    EXPECT_TRUE(isProtected(folders, outside + "/.config/autostart"));
    std::filesystem::rename(outside, folder + "/elsewhere");
    EXPECT_TRUE(isProtected(folders, folder + "/elsewhere"));
    EXPECT_FALSE(isProtected(folders, rows));
    std::filesystem::rename(folder + "/elsewhere", outside);
}

TEST(MountTable, PointsAreReadWithTheirEscapes)
{
    const auto points = parseMountPoints("22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                                         "30 22 0:5 /a\\040b /mnt/a\\040b\\134\\012c rw - tmpfs x rw\n"
                                         "short line\n\n"
                                         "31 22 0:5 / /last rw - tmpfs x rw");
    EXPECT_EQ(points, (std::vector<std::string>{"/", "/mnt/a b\\\nc", "/last"}));
    EXPECT_TRUE(holdsMount("/"));
    EXPECT_TRUE(holdsMount("/proc"));
    EXPECT_FALSE(holdsMount("/etc/xdg/nothing"));
}

TEST(MountTable, AboveIsByWholeSteps)
{
    EXPECT_TRUE(isAtOrAbove("/", "/a"));
    EXPECT_TRUE(isAtOrAbove("/a", "/a"));
    EXPECT_TRUE(isAtOrAbove("/a", "/a/b"));
    EXPECT_FALSE(isAtOrAbove("/a", "/ab"));
    EXPECT_FALSE(isAtOrAbove("/a/b", "/a"));
}

TEST(FileMark, IsReadToTheByte)
{
    EXPECT_EQ(parseMark("18446744073709551615:2:4294967295"),
              (FileMark{18446744073709551615U, 2, 4294967295U}));
    for (const char *text : {"", "1:2", "1:2:", "1:2:3:", "1:2:3:4", " 1:2:3", "1:2:3 ", "-1:2:3", "+1:2:3",
                             "1:2:0x8", "18446744073709551616:2:3", "1:2:4294967296", "1::3"})
        EXPECT_FALSE(parseMark(text)) << text;
}

} // namespace quillbay::elevate
