#include "platform/linux/uninstalling/removal/HandleFileRemoval.h"
#include "support/MountNamespace.h"
#include "uninstaller/Removal.h"
#include "uninstaller/removal/RemovalFixture.h"

#include <filesystem>

#include <sys/stat.h>

namespace quillbay {

using testing::difference;
using testing::HostileTree;
using testing::RemovalTest;
using testing::snapshotOf;
using testing::TreeSnapshot;

namespace {

class RemovalNever : public RemovalTest
{
protected:
    /// Puts something else in a row's place, between the scan and the removal; the old one is kept, so that
    /// its number is not given away again.
    void swap(HostileTree &tree, const QByteArray &row)
    {
        std::filesystem::create_directories((home + "/kept").toStdString());
        std::filesystem::rename(row.toStdString(),
                                (home + "/kept/").toStdString() + std::to_string(++m_kept));
        switch (tree.number(4)) {
        case 0:
            std::filesystem::create_symlink((outside + "/file1").toStdString(), row.toStdString());
            break;
        case 1:
            std::filesystem::create_directory_symlink(outside.toStdString(), row.toStdString());
            break;
        case 2:
            std::filesystem::create_hard_link((outside + "/file2").toStdString(), row.toStdString());
            break;
        default:
            tree.make(row.toStdString());
        }
    }

private:
    int m_kept = 0;
};

} // namespace

// Random rows among random neighbours, by both methods and by all roads: what is not a removed row is the
// same afterwards, byte by byte, and what the Trash took is in it, whole.
TEST_F(RemovalNever, AnythingButTheRowsIsTouched)
{
    HostileTree tree(101, outside.toStdString());
    int removed = 0;
    int swapped = 0;
    for (int round = 0; round < 1000; ++round) {
        SCOPED_TRACE(round);
        // The Trash writes to the disk at once, which takes its time.
        const bool isTrash = round % 4 == 3;
        const bool isElevated = round % 10 >= 7;
        elevation.perform = isElevated ? &testing::runHelper : decltype(elevation.perform)();
        elevation.commands.clear();
        if (isTrash && (isElevated || !hasTrash()))
            breakTrash();
        else
            trash.failure = {};

        QList<RemovalItem> items;
        QList<RemovalItem> chosen;
        for (int count = 2 + tree.number(4); count > 0; --count) {
            const QByteArray path = rows + '/' + QByteArray::fromStdString(tree.name());
            tree.make(path.toStdString());
            items.append(item(path, !isElevated));
            if (tree.number(3) > 0)
                chosen.append(items.last());
        }
        QList<QByteArray> changed;
        for (const RemovalItem &each : std::as_const(chosen)) {
            if (tree.number(5) == 0) {
                swap(tree, each.path);
                // Another name of a file outside may stand in for another name of that same file.
                if (FileIdentity::of(each.path) != each.identity)
                    changed.append(each.path);
                ++swapped;
            }
        }
        TreeSnapshot before = snapshotOf(rows.toStdString());
        const RemovalResult result =
            remove(chosen, isTrash ? DeletionMethod::Trash : DeletionMethod::Permanent);

        for (const QByteArray &path : result.removedPaths) {
            ASSERT_FALSE(exists(path));
            ASSERT_FALSE(changed.contains(path));
            std::erase_if(before, [&](const auto &entry) {
                return entry.first == path.toStdString() ||
                       entry.first.compare(0, std::size_t(path.size()) + 1, path.toStdString() + '/') == 0;
            });
        }
        ASSERT_EQ(difference(before, snapshotOf(rows.toStdString())), "");
        ASSERT_EQ(damage(), "");
        ASSERT_EQ(result.removedCount + result.errors.size(), chosen.size());
        for (const RemovalRecord &record : result.receipt.records) {
            if (isTrash) {
                const auto place =
                    trash.find(record.path, {record.file.device, record.file.inode, record.file.kind});
                ASSERT_TRUE(place);
                ASSERT_TRUE(exists(place->file));
            }
        }
        for (const platform::ElevatedCommand &command : std::as_const(elevation.commands))
            ASSERT_TRUE(command.line.startsWith(isTrash ? "mv '" : "rm -rf '"));
        removed += result.removedCount;
        std::filesystem::remove_all(rows.toStdString());
        std::filesystem::remove_all(trashFolder.toStdString());
        std::filesystem::create_directory(rows.toStdString());
    }
    EXPECT_GT(removed, 1200);
    EXPECT_GT(swapped, 200);
}

TEST_F(RemovalNever, APathOfFourThousandBytesIsTooLong)
{
    elevate();
    HostileTree tree(5, outside.toStdString());
    for (const bool isUserDeletable : {true, false}) {
        const QByteArray path = QByteArray::fromStdString(tree.makeLongPath(rows.toStdString(), 4000));
        ASSERT_EQ(path.size(), 4000);
        const RemovalResult result = remove({item(path, isUserDeletable)}, DeletionMethod::Permanent);
        EXPECT_EQ(result.removedCount, 1) << result.errors.join(u'\n').toStdString();
        EXPECT_FALSE(exists(path));
        std::filesystem::remove_all(rows.toStdString());
        std::filesystem::create_directory(rows.toStdString());
    }
    breakTrash();
    const QByteArray path = QByteArray::fromStdString(tree.makeLongPath(rows.toStdString(), 4000));
    const RemovalResult result = remove({item(path)}, DeletionMethod::Trash);
    EXPECT_EQ(result.removedCount, 1) << result.errors.join(u'\n').toStdString();
    EXPECT_FALSE(exists(path));
    EXPECT_EQ(inTrash("files").size(), 1);
    EXPECT_EQ(back(result.receipt).restored, QList<QByteArray>{path});
    EXPECT_TRUE(exists(path));
}

// The folder of the rows itself is swapped for a link, or was one all the time.
TEST_F(RemovalNever, ALinkOnTheWayLeadsToTheFileThatWasScannedOrNowhere)
{
    elevate();
    const QByteArray way = home + "/way";
    std::filesystem::remove(way.toStdString());
    std::filesystem::create_directory_symlink(rows.toStdString(), way.toStdString());
    file("row");
    EXPECT_EQ(remove({item(way + "/row")}, DeletionMethod::Permanent).removedCount, 1);
    file("row");
    EXPECT_EQ(remove({item(way + "/row", false)}, DeletionMethod::Permanent).removedCount, 1);
    EXPECT_EQ(lines().last(), "rm -rf '" + rows + "/row'") << "root is told the way without links";

    file("file1");
    const QList<RemovalItem> scanned = {item(way + "/file1"), item(way + "/file1", false)};
    std::filesystem::remove(way.toStdString());
    std::filesystem::create_directory_symlink(outside.toStdString(), way.toStdString());
    for (const DeletionMethod method : {DeletionMethod::Trash, DeletionMethod::Permanent})
        EXPECT_EQ(remove(scanned, method).errors.size(), 2);
    EXPECT_TRUE(exists(rows + "/file1"));
    EXPECT_TRUE(exists(outside + "/file1"));
}

TEST_F(RemovalNever, AMountInARowIsEntered)
{
    if (!hasTrash())
        GTEST_SKIP() << "GIO does not trash in the folder for temporary files: this was NOT tested";
    const auto answer = testing::inMountNamespace([&]() -> std::string {
        const platform::HandleFileRemoval real;
        const QByteArray row = rows + "/row";
        for (const QByteArray &source : {outside, QByteArray()}) {
            const QByteArray point = row + "/a/point";
            std::filesystem::create_directories(point.toStdString());
            if (!testing::mountAt(source.toStdString(), point.toStdString()))
                return "cannot mount";
            for (const QByteArray &path : {row, row + "/a", point}) {
                const RemovalItem each = item(path);
                if (!real.holdsMount(path))
                    return "not seen: " + path.toStdString();
                const platform::FileStamp stamp{each.identity.device, each.identity.inode,
                                                each.identity.kind};
                if (real.remove(path, stamp).outcome != platform::FileResult::Outcome::Mounted ||
                    real.move(path, rows + "/to", stamp).outcome != platform::FileResult::Outcome::Mounted)
                    return "not refused: " + path.toStdString();
                for (const DeletionMethod method : {DeletionMethod::Trash, DeletionMethod::Permanent}) {
                    const RemovalResult result = removeItems({each}, method, services());
                    if (result.removedCount != 0 || result.errors.size() != 1)
                        return "removed: " + path.toStdString();
                }
            }
        }
        return damage();
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: mounts in rows were NOT tested";
    EXPECT_EQ(*answer, "");
}

} // namespace quillbay
