#include "platform/linux/icons/IconTheme.h"

#include <gmock/gmock.h>

namespace quillbay::platform {
namespace {

using ::testing::IsEmpty;

TEST(IconTheme, ReadsFoldersWithTheirSizesAndContexts)
{
    const IconTheme theme =
        parseIconTheme("# comment\n[Icon Theme]\nName=A\nName[de]=B\nInherits=one, two,\n"
                       "Directories=48/apps,sc/apps,32/mimetypes,48/apps\n"
                       "ScaledDirectories=24@2/apps\n"
                       "[48/apps]\nSize=48\nContext=Applications\nType=Fixed\n"
                       "[sc/apps]\r\nSize=64\r\nType=Scalable\r\nMinSize=8\r\nMaxSize=512\r\n"
                       "[32/mimetypes]\nSize = 32\nContext=MimeTypes\nThreshold=4\n"
                       "[24@2/apps]\nSize=24\nScale=2\nType=Fixed\nContext=applications\n"
                       "[unlisted]\nSize=16\n");
    EXPECT_EQ(theme.inherits, QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    ASSERT_EQ(theme.folders.size(), 4U);
    using Type = IconThemeFolder::Type;
    const auto is = [](const IconThemeFolder &folder, const char *path, int size, int min, int max, Type type,
                       bool applications) {
        return folder.path == path && folder.size == size && folder.minSize == min && folder.maxSize == max &&
               folder.type == type && folder.applications == applications;
    };
    EXPECT_TRUE(is(theme.folders[0], "48/apps", 48, 48, 48, Type::Fixed, true));
    EXPECT_TRUE(is(theme.folders[1], "sc/apps", 64, 8, 512, Type::Scalable, false));
    EXPECT_TRUE(is(theme.folders[2], "32/mimetypes", 32, 28, 36, Type::Threshold, false));
    EXPECT_TRUE(is(theme.folders[3], "24@2/apps", 48, 48, 48, Type::Fixed, true));
}

TEST(IconTheme, LeavesOutFoldersThatItCannotUse)
{
    const IconTheme theme =
        parseIconTheme("[Icon Theme]\nDirectories=../up,/etc,a/../../b,,sizeless,bad,nogroup,huge\n"
                       "[../up]\nSize=48\n[/etc]\nSize=48\n[a/../../b]\nSize=48\n"
                       "[sizeless]\nType=Fixed\n[bad]\nSize=big\n"
                       "[huge]\nSize=2000000000\nScale=2000000000\n");
    ASSERT_EQ(theme.folders.size(), 1U);
    EXPECT_EQ(theme.folders[0].path, "huge");
    EXPECT_LE(theme.folders[0].size, 4096 * 16);
    EXPECT_THAT(parseIconTheme("").folders, IsEmpty());
    EXPECT_THAT(parseIconTheme(QByteArray("\0\xff[x]=\n[", 8)).folders, IsEmpty());
}

TEST(IconTheme, RanksPicturesForAWantedSize)
{
    using Type = IconThemeFolder::Type;
    const auto fixed = [](int size, bool applications = true) {
        return IconThemeFolder{{}, size, size, size, Type::Fixed, applications};
    };
    const IconThemeFolder scalable = {{}, 48, 8, 512, Type::Scalable, true};
    const int edge = 80;
    const std::vector<IconRank> bestFirst = {
        rankIcon(fixed(80), false, edge), // exact
        rankIcon(scalable, true, edge),   // drawn for a range that holds the size
        rankIcon(fixed(64), true, edge),  // another drawing, the larger first
        rankIcon(fixed(48), true, edge),
        rankIcon(fixed(96), false, edge), // larger pictures, the nearest first
        rankIcon(fixed(256), false, edge),
        rankIcon(fixed(64), false, edge), // smaller ones, the largest first
        rankIcon(scalable, false, edge),
        rankIcon(fixed(24), false, edge),
        rankIcon(fixed(16), true, edge),         // a symbol's drawing is no better than its size
        rankIcon(fixed(80, false), false, edge), // another context
    };
    for (size_t i = 1; i < bestFirst.size(); ++i)
        EXPECT_LT(bestFirst[i - 1], bestFirst[i]) << i;
}

} // namespace
} // namespace quillbay::platform
