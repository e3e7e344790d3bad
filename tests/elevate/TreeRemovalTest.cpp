#include "elevate/TreeRemoval.h"

#include "elevate/FileFixture.h"
#include "elevate/MountTable.h"
#include "support/MountNamespace.h"

#include <atomic>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/mount.h>

namespace quillbay::elevate {

using namespace ::quillbay::testing;

class TreeRemoval : public FileTest
{
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

// Somebody swaps folders in the row for links to outside, and back, as fast as they can while it is removed.
TEST_F(TreeRemoval, SwapsWhileItWorksLeadNowhere)
{
    const std::string row = rows + "/row";
    std::atomic<bool> isOver = false;
    std::thread swapper([&] {
        const std::string inner = row + "/inner/folder";
        const std::string link = rows + "/link";
        while (!isOver) {
            std::error_code error;
            std::filesystem::create_directory_symlink(outside, link, error);
            static_cast<void>(renameat2(AT_FDCWD, inner.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE));
            std::filesystem::remove_all(link, error);
        }
    });
    int removed = 0;
    for (int i = 0; i < 400; ++i) {
        // Made aside, since what makes it follows links.
        const std::string made = rows + "/made";
        std::filesystem::create_directories(made + "/inner/folder/more");
        for (int file = 0; file < 5; ++file)
            writeFile(made + "/inner/folder/file" + std::to_string(file), "x");
        std::filesystem::rename(made, row);
        removed += removeTree(entry(row), mark(row)).done();
        if (exists(row))
            std::filesystem::rename(row, rows + "/rest" + std::to_string(i));
        if (const std::string what = damage(); !what.empty()) {
            ADD_FAILURE() << what;
            break;
        }
    }
    isOver = true;
    swapper.join();
    EXPECT_EQ(damage(), "");
    EXPECT_GT(removed, 0);
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
