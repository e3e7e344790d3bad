#include "platform/linux/uninstalling/removal/TrashFolder.h"
#include "platform/linux/uninstalling/removal/TrashInfo.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/removal/RemovalFixture.h"

#include <QFile>
#include <QProcess>

#include <filesystem>
#include <fstream>

namespace quillbay {

using testing::difference;
using testing::RemovalTest;
using testing::snapshotOf;
using testing::TreeSnapshot;

namespace {

constexpr int rowCount = 60;
constexpr int fileCount = 20;

class KilledRemoval : public RemovalTest
{
protected:
    /// Makes the rows, has another process remove them, and kills it after it has got so far.
    void killAfter(const char *method, int gone)
    {
        std::filesystem::remove_all(qgetenv("XDG_STATE_HOME").toStdString());
        QStringList arguments = {QString::fromLatin1(method), QStringLiteral("/nowhere")};
        for (int row = 0; row < rowCount; ++row) {
            const QByteArray path = rowPath(row);
            std::filesystem::create_directories((path + "/sub").toStdString());
            for (int number = 0; number < fileCount; ++number)
                testing::writeFile(path.toStdString() + "/sub/file" + std::to_string(number), "content");
            arguments.append(QFile::decodeName(path));
        }
        m_before = snapshotOf(rows.toStdString());
        QProcess process;
        process.start(QStringLiteral(QUILLBAY_REMOVAL_DRIVER), arguments);
        ASSERT_TRUE(process.waitForStarted());
        const QByteArray last = rowPath(gone);
        // No pause: the moment is to be any.
        for (int looks = 0; exists(last) && looks < 20000000 && process.state() == QProcess::Running;
             ++looks) {
        }
        process.kill();
        ASSERT_TRUE(process.waitForFinished(20000));
        ASSERT_FALSE(exists(last));
    }

    QByteArray rowPath(int row) const { return rows + "/row" + QByteArray::number(1000 + row); }

    /// Everything that is left is as it was.
    std::string changes() const
    {
        TreeSnapshot before = m_before;
        const TreeSnapshot after = snapshotOf(rows.toStdString());
        std::erase_if(before, [&](const auto &entry) { return !after.contains(entry.first); });
        return difference(before, after);
    }

    Receipt receipt() const
    {
        const QStringList all =
            ReceiptStore::files(QFile::decodeName(qgetenv("XDG_STATE_HOME") + "/quillbay/removals"));
        return all.isEmpty() ? Receipt{} : ReceiptStore::read(all.last());
    }

private:
    TreeSnapshot m_before;
};

} // namespace

TEST_F(KilledRemoval, ForGoodWhatIsLeftIsUntouchedAndTheRestIsOnRecord)
{
    for (const int moment : {0, 1, 7, 20, 40}) {
        SCOPED_TRACE(moment);
        killAfter("permanent", moment);
        EXPECT_EQ(changes(), "");
        EXPECT_EQ(damage(), "");
        // Rows go in their order: whole, then one in work at most, then all that are left.
        int row = 0;
        while (row < rowCount && !exists(rowPath(row)))
            ++row;
        EXPECT_GT(row, moment);
        for (int later = row + 1; later < rowCount; ++later) {
            int count = 0;
            for ([[maybe_unused]] const auto &each :
                 std::filesystem::directory_iterator(rowPath(later).toStdString() + "/sub"))
                ++count;
            EXPECT_EQ(count, fileCount);
        }
        // What is on record is gone, and of what is gone at most the last is not on record.
        const Receipt written = receipt();
        EXPECT_GE(written.records.size(), row - 1);
        for (const RemovalRecord &record : written.records)
            EXPECT_FALSE(exists(record.path));
        std::filesystem::remove_all(rows.toStdString());
        std::filesystem::create_directory(rows.toStdString());
    }
}

TEST_F(KilledRemoval, ToTheTrashEveryRowIsInOnePlaceAndWhole)
{
    if (!hasTrash())
        GTEST_SKIP() << "GIO does not trash in the folder for temporary files: this was NOT tested";
    for (const int moment : {0, 3, 30}) {
        SCOPED_TRACE(moment);
        killAfter("trash", moment);
        EXPECT_EQ(changes(), "");
        for (int row = 0; row < rowCount; ++row) {
            const QByteArray origin = rowPath(row);
            const QByteArray trashed = trashFolder + "/files/row" + QByteArray::number(1000 + row);
            ASSERT_NE(exists(origin), exists(trashed)) << row;
            const QByteArray place = exists(origin) ? origin : trashed;
            int count = 0;
            for ([[maybe_unused]] const auto &each :
                 std::filesystem::directory_iterator(place.toStdString() + "/sub"))
                ++count;
            EXPECT_EQ(count, fileCount);
            if (place == trashed) {
                const auto file = FileIdentity::of(trashed);
                EXPECT_TRUE(trash.find(origin, {file->device, file->inode, file->kind}))
                    << "without a record";
            }
        }
        const Receipt written = receipt();
        EXPECT_EQ(back(written).restored.size(), written.records.size());
        for (const QByteArray &folder : {rows, trashFolder})
            std::filesystem::remove_all(folder.toStdString());
        std::filesystem::create_directory(rows.toStdString());
    }
}

} // namespace quillbay
