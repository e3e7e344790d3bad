#include "elevate/TreeRemoval.h"

#include "elevate/FileFixture.h"
#include "elevate/MountTable.h"
#include "support/MountNamespace.h"

#include <fstream>
#include <stop_token>
#include <thread>

#include <fcntl.h>
#include <sys/mount.h>

namespace quillbay::elevate {

using namespace ::quillbay::testing;

class TreeRemoval : public FileTest
{
protected:
    TreeRemoval()
        : FileTest(quickPlace())
    {
    }

    /// However often something else comes in between.
    static void clear(const std::string &path)
    {
        std::error_code error;
        while (exists(path))
            std::filesystem::remove_all(path, error);
    }
};

// Folders in each other far beyond what a path can name.
static void makeDeep(const std::string &path, int depth)
{
    ASSERT_EQ(mkdir(path.c_str(), 0755), 0);
    Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY));
    const std::string name(200, 'd');
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(mkdirat(folder.get(), name.c_str(), 0755), 0);
        folder = Descriptor(openat(folder.get(), name.c_str(), O_RDONLY | O_DIRECTORY));
        ASSERT_TRUE(folder);
    }
}

TEST_F(TreeRemoval, TakesARowAndNothingElse)
{
    HostileTree tree(42, outside);
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        const std::string row = rows + '/' + tree.name();
        const std::string neighbour = rows + '/' + tree.name();
        tree.make(row);
        tree.make(neighbour);
        const TreeSnapshot kept = snapshotOf(neighbour);
        ASSERT_TRUE(removeTree(entry(row), mark(row)).done());
        ASSERT_FALSE(exists(row));
        ASSERT_EQ(difference(kept, snapshotOf(neighbour)), "");
        ASSERT_EQ(damage(), "");
        ASSERT_TRUE(removeTree(entry(neighbour), mark(neighbour)).done());
    }
    EXPECT_TRUE(std::filesystem::is_empty(rows));
}

TEST_F(TreeRemoval, LongPathsAndDeepTreesNeedNoMoreDescriptors)
{
    HostileTree tree(3, outside);
    const std::string file = tree.makeLongPath(rows, 4000);
    EXPECT_EQ(file.size(), 4000U);
    EXPECT_TRUE(removeTree(entry(file), mark(file)).done());
    EXPECT_FALSE(exists(file));

    makeDeep(rows + "/deep", 3000);
    EXPECT_TRUE(removeTree(entry(rows + "/deep"), mark(rows + "/deep")).done());
    EXPECT_FALSE(exists(rows + "/deep"));
}

TEST_F(TreeRemoval, AnotherFileThanTheOneMeantStays)
{
    const std::string row = rows + "/row";
    const auto swap = [&](const FileMark &before) {
        const TreeSnapshot kept = snapshotOf(row);
        const Outcome outcome = removeTree(entry(row), before);
        EXPECT_EQ(outcome.status, Status::Changed);
        EXPECT_EQ(difference(kept, snapshotOf(row)), "");
        EXPECT_EQ(damage(), "");
    };
    writeFile(row, "scanned");
    const FileMark file = mark(row);
    // The old one is kept, so that its number is not given away again.
    std::filesystem::rename(row, rows + "/old");
    writeFile(row, "another");
    swap(file);
    std::filesystem::remove(row);
    std::filesystem::create_symlink(outside + "/file1", row);
    swap(file);
    std::filesystem::remove(row);
    std::filesystem::create_directory(row);
    writeFile(row + "/inside", "x");
    swap(file);
    const FileMark folderMark = mark(row);
    std::filesystem::rename(row, rows + "/oldfolder");
    std::filesystem::create_directory_symlink(outside, row);
    swap(folderMark);
    std::filesystem::remove(row);
    EXPECT_EQ(removeTree(entry(row), file).status, Status::Missing);
    EXPECT_TRUE(exists(rows + "/oldfolder/inside"));
}

TEST_F(TreeRemoval, AWayThroughALinkIsNoWay)
{
    std::filesystem::create_directory_symlink(outside, rows + "/link");
    for (const std::string &path :
         {rows + "/link/file1", rows + "/link/folder/deeper", rows + "/../outside/file1", rows + "/./x",
          rows + "//x", rows + "/x/", std::string("rows/x"), std::string(), std::string("/"),
          rows + std::string("/x\0y", 4), outside + "/file1/x"})
        EXPECT_EQ(openEntry(path).outcome.status, Status::Unsafe) << path;
    EXPECT_EQ(openEntry(rows + "/nowhere/x").outcome.status, Status::Missing);

    EXPECT_EQ(withoutLinks(rows + "/link/link"), std::filesystem::canonical(outside).string() + "/link");
    EXPECT_EQ(withoutLinks("/tmp"), "/tmp");
    EXPECT_EQ(withoutLinks(rows + "/link/../x"), "");
    EXPECT_EQ(withoutLinks(rows + "/nowhere/x"), "");
}

// Somebody swaps a folder in the row with a link to outside, and back, as fast as they can while it is
// removed.
TEST_F(TreeRemoval, SwapsWhileItWorksLeadNowhere)
{
    const std::string row = rows + "/row";
    const std::string link = rows + "/link";
    std::jthread swapper([&](const std::stop_token &stop) {
        const std::string inner = row + "/folder";
        while (!stop.stop_requested())
            static_cast<void>(renameat2(AT_FDCWD, inner.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE));
    });
    int removed = 0;
    for (int i = 0; i < 4000; ++i) {
        // Without a row there is nothing to swap but by a call that has found its folders already.
        clear(link);
        std::filesystem::create_directory_symlink(outside, link);
        const std::string made = rows + "/made";
        std::filesystem::create_directories(made + "/folder/more");
        writeFile(made + "/folder/file", "x");
        std::filesystem::rename(made, row);
        removed += removeTree(entry(row), mark(row)).done();
        if (exists(row)) {
            std::filesystem::rename(row, made);
            clear(made);
        }
        if (!exists(outside + "/folder/deeper/file0") || !exists(outside + "/file1"))
            break;
    }
    swapper.request_stop();
    swapper.join();
    EXPECT_EQ(damage(), "");
    EXPECT_GT(removed, 0);
}

// Somebody moves the folder that is just being emptied to where the names beside it exist as well.
TEST_F(TreeRemoval, AFolderThatIsMovedAwayTakesNothingWithIt)
{
    const std::string row = rows + "/row";
    const std::string moved = outside + "/more";
    std::jthread mover([&](const std::stop_token &stop) {
        while (!stop.stop_requested())
            static_cast<void>(rename((row + "/folder/more").c_str(), moved.c_str()));
    });
    int changed = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string made = rows + "/made";
        std::filesystem::create_directories(made + "/folder");
        const auto makeFiles = [&](int from) {
            for (int number = from; number < from + 2; ++number)
                writeFile(made + "/folder/file" + std::to_string(number), "x");
        };
        // Before and after the folder, in whatever order the names are read.
        makeFiles(0);
        std::filesystem::create_directory(made + "/folder/more");
        for (int number = 0; number < 30; ++number)
            writeFile(made + "/folder/more/" + std::to_string(number), "x");
        makeFiles(2);
        const FileMark mine = mark(made);
        const Entry place = entry(row);
        std::filesystem::rename(made, row);
        changed += removeTree(place, mine).status == Status::Changed;
        clear(row);
        clear(moved);
    }
    mover.request_stop();
    mover.join();
    EXPECT_EQ(damage(), "");
    EXPECT_GT(changed, 0);
}

TEST_F(TreeRemoval, AMountIsNeverEntered)
{
    const auto answer = inMountNamespace([this]() -> std::string {
        const std::string row = rows + "/row";
        // Bind mounts are of the same device as the row: only the mount's own number tells.
        for (const std::string &source : {outside, std::string()}) {
            std::filesystem::create_directories(row + "/a/b/mounted");
            if (!mountAt(source, row + "/a/b/mounted"))
                return "cannot mount";
            if (source.empty())
                writeFile(row + "/a/b/mounted/inside", "x");
            if (!holdsMount(row) || !holdsMount(row + "/a/b/mounted") ||
                holdsMount(row + "/a/b/mounted/inside"))
                return "the table does not say so";
            for (const std::string &each : {row, row + "/a/b/mounted"}) {
                if (removeTree(entry(each), mark(each)).status != Status::Mounted)
                    return "not refused: " + each;
            }
            if (source.empty() && !exists(row + "/a/b/mounted/inside"))
                return "removed in a mount";
        }
        std::filesystem::create_directories(row + "/c");
        writeFile(row + "/c/file", "x");
        if (!mountAt(outside + "/file1", row + "/c/file"))
            return "cannot mount a file";
        if (removeTree(entry(row + "/c"), mark(row + "/c")).status != Status::Mounted)
            return "a mounted file was not refused";
        return damage();
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: mounts in rows were NOT tested";
    EXPECT_EQ(*answer, "");
    EXPECT_EQ(damage(), "");
}

TEST_F(TreeRemoval, WhatCannotBeRemovedStopsItAndTheRestStays)
{
    const std::string row = rows + "/row";
    std::filesystem::create_directories(row + "/locked/inner");
    const auto answer = inMountNamespace([&]() -> std::string {
        if (!mountAt({}, row))
            return "cannot mount";
        writeFile(row + "/file", "x");
        if (mount(nullptr, row.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            return "cannot make it read-only";
        const Outcome outcome = removeTree(entry(row + "/file"), mark(row + "/file"));
        return outcome.status == Status::Failed && outcome.error == EROFS && exists(row + "/file")
                   ? ""
                   : "no failure";
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: a read-only file system was NOT tested";
    EXPECT_EQ(*answer, "");
}

} // namespace quillbay::elevate
