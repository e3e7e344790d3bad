#include "platform/linux/uninstalling/removal/XdgTrash.h"

#include "platform/linux/uninstalling/removal/TrashFolder.h"
#include "platform/linux/uninstalling/removal/TrashInfo.h"
#include "support/HostileTree.h"
#include "support/MountNamespace.h"

#include <QDir>
#include <QFile>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

using quillbay::testing::HostileTree;
using quillbay::testing::writeFile;

const QDateTime now(QDate(2024, 5, 1), QTime(12, 0));

/// Works in the home of the whole test program: GLib asks for the folders only once.
class XdgTrashTest : public ::testing::Test
{
protected:
    XdgTrashTest()
        : home(qgetenv("HOME"))
        , trashFolder(ownTrash().path.toStdString())
    {
        std::filesystem::remove_all(trashFolder);
        std::filesystem::create_directories(home.toStdString() + "/row");
    }
    // Qt itself cannot remove all of these names.
    ~XdgTrashTest() override
    {
        for (const std::string &folder :
             {home.toStdString() + "/row", home.toStdString() + "/elsewhere", trashFolder})
            std::filesystem::remove_all(folder);
    }

    static FileStamp stamp(const QByteArray &path)
    {
        struct stat status = {};
        EXPECT_EQ(lstat(path.constData(), &status), 0);
        return {status.st_dev, status.st_ino, quint32(status.st_mode & S_IFMT)};
    }
    static bool exists(const QByteArray &path)
    {
        struct stat status = {};
        return lstat(path.constData(), &status) == 0;
    }

    QByteArray home;
    std::string trashFolder;
    XdgTrash trash{[] { return now; }};
};

} // namespace

TEST_F(XdgTrashTest, WhatTheDesktopTrashedIsFoundByItsRecord)
{
    HostileTree tree(31, home.toStdString() + "/elsewhere");
    tree.makeOutside();
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        const QByteArray path = home + "/row/" + QByteArray::fromStdString(tree.name());
        tree.make(path.toStdString());
        const FileStamp file = stamp(path);
        const FileResult result = trash.moveToTrash(path);
        if (i == 0 && !result.done())
            GTEST_SKIP() << "GIO does not trash in the folder for temporary files, so this was NOT tested: "
                         << result.description.toStdString();
        // A name as long as a file system takes leaves no room for its record's.
        if (!result.done() && path.size() - path.lastIndexOf('/') > 240) {
            ASSERT_EQ(stamp(path), file);
            continue;
        }
        ASSERT_TRUE(result.done()) << result.description.toStdString();
        ASSERT_FALSE(exists(path));
        const auto found = trash.find(path, file);
        ASSERT_TRUE(found);
        ASSERT_EQ(stamp(found->file), file);
        ASSERT_FALSE(trash.find(path + 'x', file)) << "another origin";
        ASSERT_FALSE(trash.find(path, {file.device, file.inode + 1, file.kind})) << "another file";
        ASSERT_FALSE(trash.find(path, {file.device, file.inode, file.kind ^ S_IFREG})) << "another kind";
    }
}

TEST_F(XdgTrashTest, OfTwoFromOnePathEachIsFound)
{
    const QByteArray path = home + "/row/report.log";
    QList<FileStamp> files;
    for (int i = 0; i < 3; ++i) {
        writeFile(path.toStdString(), std::to_string(i));
        files.append(stamp(path));
        if (!trash.moveToTrash(path).done())
            GTEST_SKIP() << "GIO does not trash in the folder for temporary files: this was NOT tested";
    }
    for (int i = 0; i < 3; ++i) {
        const auto found = trash.find(path, files[i]);
        ASSERT_TRUE(found);
        std::ifstream file(found->file.toStdString());
        std::string content;
        file >> content;
        EXPECT_EQ(content, std::to_string(i));
    }
}

TEST_F(XdgTrashTest, FailuresLeaveTheFileWhereItWas)
{
    EXPECT_EQ(trash.moveToTrash(home + "/row/nothing").outcome, FileResult::Outcome::Missing);
    const FileResult system = trash.moveToTrash("/proc/self/status");
    EXPECT_FALSE(system.done());
    EXPECT_FALSE(system.description.isEmpty());
}

TEST_F(XdgTrashTest, APlaceIsTakenOnceInBothFolders)
{
    const TrashReservation first = trash.reserve("report.log", "/from/re port\n.log");
    ASSERT_TRUE(first.result.done());
    EXPECT_EQ(first.place, ownTrash().place("report.log"));
    QFile info(QFile::decodeName(first.place.info));
    ASSERT_TRUE(info.open(QIODevice::ReadOnly));
    EXPECT_EQ(info.readAll(),
              "[Trash Info]\nPath=/from/re%20port%0A.log\nDeletionDate=2024-05-01T12:00:00\n");
    struct stat status = {};
    ASSERT_EQ(stat(first.place.info.constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    ASSERT_EQ(stat(trashFolder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);

    EXPECT_EQ(trash.reserve("report.log", "/other").result.outcome, FileResult::Outcome::Occupied)
        << "a record";
    EXPECT_TRUE(trash.release(first.place));
    EXPECT_FALSE(exists(first.place.info));
    EXPECT_TRUE(trash.release(first.place)) << "gone already";

    writeFile(trashFolder + "/files/report.log", "a stray without a record");
    EXPECT_EQ(trash.reserve("report.log", "/other").result.outcome, FileResult::Outcome::Occupied)
        << "a file";
    EXPECT_FALSE(exists(first.place.info));

    // The file came after all: without its record nobody would know where it belongs.
    const TrashReservation late = trash.reserve("late", "/from/late");
    ASSERT_TRUE(late.result.done());
    writeFile(late.place.file.toStdString(), "x");
    EXPECT_TRUE(trash.release(late.place));
    EXPECT_TRUE(exists(late.place.info));

    EXPECT_FALSE(trash.reserve(QByteArray(250, 'x'), "/long").result.done());
    EXPECT_FALSE(exists(ownTrash().place(QByteArray(250, 'x')).file));
}

TEST_F(XdgTrashTest, OtherFileSystemsTrashIsSearchedFromTheOriginUpwards)
{
    const auto answer = quillbay::testing::inMountNamespace([&]() -> std::string {
        const std::string top = home.toStdString() + "/row/disk";
        std::filesystem::create_directories(top);
        std::filesystem::create_directory_symlink(top, home.toStdString() + "/row/link");
        if (!quillbay::testing::mountAt({}, top))
            return "cannot mount";
        const std::string bin = top + "/.Trash-" + std::to_string(getuid());
        for (const char *folder : {"/files", "/info"})
            std::filesystem::create_directories(bin + folder);
        writeFile(bin + "/files/a b.2", "x");
        writeFile(bin + "/info/a b.2.trashinfo",
                  "[Trash Info]\nPath=deep/a%20b\nDeletionDate=2024-05-01T12:00:00\n");
        std::filesystem::create_directory(top + "/deep");
        const QByteArray place = QByteArray::fromStdString(bin + "/files/a b.2");
        for (const char *way : {"/row/disk/deep/a b", "/row/link/deep/a b"}) {
            const auto found = trash.find(home + way, stamp(place));
            if (!found || found->file != place)
                return std::string("not found by ") + way;
        }
        return trash.find(home + "/row/deep/a b", stamp(place)) ? "found from elsewhere" : "";
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: the Trash of other file systems was NOT tested";
    EXPECT_EQ(*answer, "");
}

} // namespace quillbay::platform
