#include "support/HostileTree.h"
#include "uninstaller/ReceiptStore.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillbay {

namespace {

RemovalRecord record(testing::HostileTree &names, int number)
{
    RemovalRecord result;
    result.path = "/home/" + QByteArray::fromStdString(names.name());
    result.displayName = QString::fromUtf8(result.path.mid(6));
    result.method = number % 2 ? DeletionMethod::Trash : DeletionMethod::Permanent;
    result.isElevated = number % 3 == 0;
    result.bytes = qint64(number) << 40;
    result.when = QDateTime(QDate(2024, 5, 1), QTime(12, 0, 0, number % 1000), Qt::UTC);
    if (result.method == DeletionMethod::Trash)
        result.file = {~quint64(0), ~quint64(0) - quint64(number), S_IFDIR};
    return result;
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.toLocal8Bit().constData(), &status), 0);
    return status.st_mode & 0777;
}

} // namespace

TEST(Receipt, EveryByteOfEveryRecordComesBackAndItsTornLineDoesNot)
{
    testing::HostileTree names(37, {});
    for (int i = 0; i < 2000; ++i) {
        const RemovalRecord written = record(names, i);
        const QByteArray line = encodeRecord(written);
        ASSERT_FALSE(line.contains('\n'));
        const auto read = decodeRecord(line);
        ASSERT_TRUE(read);
        ASSERT_EQ(*read, written) << line.constData();
        ASSERT_FALSE(decodeRecord(line.left(names.number(int(line.size())))));
    }
    for (
        const char *line :
        {"", "{}", "[]", "null", "7",
         R"({"what":"a","from":"/a","method":"trash","elevated":false,"bytes":1,"when":"2024-05-01T12:00:00.000Z"})",
         R"({"what":"a","from":"file:///a","method":"other","elevated":false,"bytes":1,"when":"2024-05-01T12:00:00.000Z"})",
         R"({"what":"a","from":"file:///a","method":"trash","elevated":0,"bytes":1,"when":"2024-05-01T12:00:00.000Z"})",
         R"({"what":"a","from":"file:///a","method":"trash","elevated":false,"bytes":1,"when":"yesterday"})"})
        EXPECT_FALSE(decodeRecord(line)) << line;
}

TEST(ReceiptStore, AFileForEachRunThatNobodyElseReads)
{
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("state/quillbay/removals"));
    testing::HostileTree names(41, {});
    QList<RemovalRecord> records;
    ReceiptStore first(folder);
    EXPECT_TRUE(first.path().isEmpty());
    EXPECT_TRUE(ReceiptStore::files(folder).isEmpty()) << "nothing was removed";
    for (int i = 0; i < 5; ++i) {
        records.append(record(names, i));
        ASSERT_TRUE(first.append(records.last()));
        // On record at once, whatever happens next.
        EXPECT_EQ(ReceiptStore::read(first.path()).records, records);
    }
    ReceiptStore second(folder);
    ASSERT_TRUE(second.append(record(names, 9)));
    ASSERT_EQ(ReceiptStore::files(folder), (QStringList{first.path(), second.path()}));
    EXPECT_EQ(ReceiptStore::read(first.path()).records, records);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(first.path()), 0600U);

    QFile torn(second.path());
    ASSERT_TRUE(torn.open(QIODevice::Append));
    torn.write(encodeRecord(record(names, 10)).left(40));
    torn.close();
    EXPECT_EQ(ReceiptStore::read(second.path()).records.size(), 1);

    QFile file(home.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(ReceiptStore(file.fileName() + QStringLiteral("/removals")).append(record(names, 1)));
}

} // namespace quillbay
