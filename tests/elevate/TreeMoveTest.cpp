#include "elevate/TreeMove.h"

#include "elevate/FileFixture.h"
#include "elevate/MountTable.h"
#include "support/MountNamespace.h"

#include <sys/mount.h>
#include <sys/xattr.h>

namespace quillbay::elevate {

using namespace ::quillbay::testing;

class TreeMove : public FileTest
{
protected:
    Outcome move(const std::string &from, const std::string &to) const
    {
        return moveTree(entry(from), entry(to), mark(from));
    }

    /// The tree's descriptions by the path below it, without inodes and the times of links' folders.
    static TreeSnapshot relative(const std::string &path)
    {
        TreeSnapshot result;
        for (const auto &[name, description] : snapshotOf(path)) {
            // "mode owner inode rest": the copy is another file.
            std::string rest = description;
            const std::size_t owner = rest.find(' ', rest.find(' ') + 1);
            rest.erase(owner, rest.find(' ', owner + 1) - owner);
            result[name.substr(path.size())] = rest;
        }
        return result;
    }
};

TEST_F(TreeMove, MovesARowAndOverwritesNothing)
{
    HostileTree tree(11, outside);
    for (int i = 0; i < 1000; ++i) {
        SCOPED_TRACE(i);
        const std::string from = rows + '/' + tree.name();
        const std::string to = rows + '/' + tree.name();
        tree.make(from);
        tree.make(to);
        const TreeSnapshot before = snapshotOf(rows);
        ASSERT_EQ(move(from, to).status, Status::Occupied);
        ASSERT_EQ(difference(before, snapshotOf(rows)), "");

        std::filesystem::remove_all(to);
        const TreeSnapshot moved = relative(from);
        const FileMark file = mark(from);
        ASSERT_TRUE(move(from, to).done());
        ASSERT_FALSE(exists(from));
        ASSERT_EQ(mark(to), file);
        ASSERT_EQ(difference(moved, relative(to)), "");
        ASSERT_EQ(damage(), "");
        std::filesystem::remove_all(to);
    }
}

TEST_F(TreeMove, AnotherFileThanTheOneMeantStays)
{
    writeFile(rows + "/a", "x");
    writeFile(rows + "/b", "y");
    const TreeSnapshot before = snapshotOf(rows);
    EXPECT_EQ(moveTree(entry(rows + "/a"), entry(rows + "/c"), mark(rows + "/b")).status, Status::Changed);
    EXPECT_EQ(moveTree(entry(rows + "/c"), entry(rows + "/d"), mark(rows + "/b")).status, Status::Missing);
    std::filesystem::create_directories(rows + "/folder");
    EXPECT_EQ(move(rows + "/folder", rows + "/folder/in").status, Status::Failed);
    std::filesystem::remove(rows + "/folder");
    EXPECT_EQ(difference(before, snapshotOf(rows)), "");
}

TEST_F(TreeMove, BetweenFileSystemsTheCopyIsWholeOrThereIsNone)
{
    const std::string other = folder + "/other";
    std::filesystem::create_directory(other);
    const bool isRoot = geteuid() == 0; // Outside: in there everybody is, for their own files alone.
    const auto answer = inMountNamespace([&]() -> std::string {
        if (!mountAt({}, other))
            return "cannot mount";
        HostileTree tree(5, outside);
        for (int i = 0; i < 100; ++i) {
            const std::string from = rows + '/' + tree.name();
            const std::string to = other + '/' + tree.name();
            tree.make(from);
            // Not through a second name of a file outside.
            if (std::filesystem::is_regular_file(std::filesystem::symlink_status(from)) &&
                std::filesystem::hard_link_count(from) == 1) {
                chmod(from.c_str(), mode_t(0400 + tree.number(0377)));
                if (isRoot && lchown(from.c_str(), 1234, 4321) != 0)
                    return "cannot give it away";
            }
            const TreeSnapshot moved = relative(from);
            if (!move(from, to).done())
                return "not moved: " + from;
            if (exists(from))
                return "still there: " + from;
            if (const std::string what = difference(moved, relative(to)); !what.empty())
                return what;
            // Back again, and onto what is there.
            writeFile(from, "taken");
            if (move(to, from).status != Status::Occupied || !exists(to))
                return "overwritten: " + from;
            std::filesystem::remove(from);
            if (!move(to, from).done())
                return "not moved back: " + from;
            if (const std::string what = difference(moved, relative(from)); !what.empty())
                return what;
            if (const std::string what = damage(); !what.empty())
                return what;
            std::filesystem::remove_all(from);
        }
        return std::filesystem::is_empty(other) && std::filesystem::is_empty(rows) ? "" : "something is left";
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: moves between file systems were NOT tested";
    EXPECT_EQ(*answer, "");
    EXPECT_EQ(damage(), "");
}

TEST_F(TreeMove, AFailingCopyLeavesTheOriginalAndNothingElse)
{
    const std::string other = folder + "/other";
    std::filesystem::create_directory(other);
    const auto answer = inMountNamespace([&]() -> std::string {
        if (mount("tmpfs", other.c_str(), "tmpfs", 0, "size=64k") != 0)
            return "cannot mount";
        const std::string row = rows + "/row";
        std::filesystem::create_directories(row + "/sub");
        writeFile(row + "/a", "x");
        writeFile(row + "/sub/large", std::string(1024 * 1024, 'x'));
        const TreeSnapshot before = snapshotOf(row);
        const auto unchanged = [&](const std::string &to, Status status) -> std::string {
            const Outcome outcome = move(row, to);
            if (outcome.status != status)
                return "not refused";
            if (const std::string what = difference(before, snapshotOf(row)); !what.empty())
                return what;
            return std::filesystem::is_empty(other) ? "" : "a part is left";
        };
        if (const std::string what = unchanged(other + "/row", Status::Failed); !what.empty())
            return "full: " + what;

        // Much too deep for a copy.
        std::filesystem::remove(row + "/sub/large");
        std::string deep = row + "/sub";
        for (int i = 0; i < 250; ++i)
            deep += "/d";
        std::filesystem::create_directories(deep);
        const TreeSnapshot deepBefore = snapshotOf(row);
        if (move(row, other + "/row").status != Status::Failed || !std::filesystem::is_empty(other))
            return "too deep: not refused";
        if (const std::string what = difference(deepBefore, snapshotOf(row)); !what.empty())
            return what;

        std::filesystem::remove_all(row + "/sub");
        std::filesystem::create_directory(row + "/mounted");
        if (!mountAt(outside, row + "/mounted"))
            return "cannot mount inside";
        if (move(row, other + "/row").status != Status::Mounted || !std::filesystem::is_empty(other))
            return "a mount was copied";
        if (move(row + "/mounted", other + "/row").status != Status::Mounted)
            return "a mount point was moved";
        return damage();
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: failing copies were NOT tested";
    EXPECT_EQ(*answer, "");
    EXPECT_EQ(damage(), "");
}

TEST_F(TreeMove, ACopyKeepsExtendedAttributes)
{
    const std::string other = folder + "/other";
    std::filesystem::create_directory(other);
    writeFile(rows + "/file", "x");
    if (setxattr((rows + "/file").c_str(), "user.origin", "here", 4, 0) != 0)
        GTEST_SKIP() << "no extended attributes in the folder for temporary files: they were NOT tested";
    const auto answer = inMountNamespace([&]() -> std::string {
        if (!mountAt(other,
                     other)) // The same file system, but a rename across the mount fails as between two.
            return "cannot mount";
        if (!move(rows + "/file", other + "/file").done())
            return "not moved";
        char value[8] = {};
        return getxattr((other + "/file").c_str(), "user.origin", value, sizeof value) == 4 &&
                       std::string(value) == "here"
                   ? ""
                   : "lost";
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: extended attributes were NOT tested";
    EXPECT_EQ(*answer, "");
}

} // namespace quillbay::elevate
