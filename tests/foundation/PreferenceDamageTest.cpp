#include "foundation/Database.h"
#include "foundation/PreferenceFixture.h"
#include "foundation/PreferenceStore.h"
#include "foundation/Statement.h"

#include <QFileInfo>

namespace quillbay {

namespace {

constexpr int RecordCount = 150;
constexpr int PageSize = 16384;

QString keyOf(int number)
{
    return QStringLiteral("key%1").arg(number);
}

QString valueOf(int number)
{
    return QString::number(number).repeated(600);
}

} // namespace

class PreferenceDamageTest : public testing::PreferenceFixture
{
protected:
    struct Image
    {
        QByteArray file;
        QByteArray journal;
    };

    /// The bytes of a file of some pages, with (while it is open) or without a journal.
    Image image(bool withJournal) const
    {
        const QString original = m_home.path(QStringLiteral("original.sqlite"));
        {
            PreferenceStore store(original);
            for (int number = 0; number < RecordCount; ++number)
                EXPECT_TRUE(store.setString(
                    keyOf(number), valueOf(number + (withJournal && number >= RecordCount / 2 ? 1 : 0))));
        }
        PreferenceStore store(original);
        for (int number = RecordCount / 2; number < RecordCount && withJournal; ++number)
            EXPECT_TRUE(store.setString(keyOf(number), valueOf(number)));
        return {bytes(original), bytes(original + QStringLiteral("-wal"))};
    }

    void lay(const Image &image) const
    {
        QDir(folder()).removeRecursively();
        m_home.write(QStringLiteral(".config/quillbay/preferences.sqlite"), image.file);
        if (!image.journal.isEmpty())
            m_home.write(QStringLiteral(".config/quillbay/preferences.sqlite-wal"), image.journal);
    }

    /// Exactly this image lies beside the file in use.
    void expectSetAside(const Image &image) const
    {
        const QStringList names = setAside();
        ASSERT_THAT(names, ::testing::SizeIs(1));
        EXPECT_TRUE(bytes(names.first()) == image.file);
        EXPECT_TRUE(bytes(names.first() + QStringLiteral("-wal")) == image.journal);
        EXPECT_THAT(lines(), ::testing::Contains(::testing::ResultOf(
                                 [&](const QString &line) { return line.contains(names.first()); }, true)));
    }

    static void expectEmptyAndUsable(PreferenceStore &store)
    {
        for (int number = 0; number < RecordCount; ++number)
            ASSERT_EQ(store.string(keyOf(number)), std::nullopt) << number;
        EXPECT_TRUE(store.setString(keyOf(1), QStringLiteral("new")));
        EXPECT_EQ(store.string(keyOf(1)), QStringLiteral("new"));
    }
};

TEST_F(PreferenceDamageTest, AFileCutShortIsSetAsideWhenOpened)
{
    const Image whole = image(false);
    const auto size = static_cast<int>(whole.file.size());
    ASSERT_GT(size, 8 * PageSize);
    for (const int length : {1, 15, 16, 99, 100, 511, 512, 4095, 4096, 4097, 2 * PageSize, 3 * PageSize + 512,
                             size / 2, size - PageSize, size - 512, size - 1}) {
        SCOPED_TRACE(length);
        const Image cut{whole.file.left(length), {}};
        lay(cut);
        {
            PreferenceStore store(path());
            expectEmptyAndUsable(store);
        }
        expectSetAside(cut);
        EXPECT_EQ(PreferenceStore(path()).string(keyOf(1)), QStringLiteral("new"));
        EXPECT_THAT(setAside(), ::testing::SizeIs(1)) << "the new file is sound";
    }
}

TEST_F(PreferenceDamageTest, GarbageIsSetAsideWhenOpened)
{
    const Image whole = image(true);
    ASSERT_FALSE(whole.journal.isEmpty());
    QByteArray badHeader = whole.file;
    badHeader.replace(0, 16, "SQLite format 4");
    QByteArray badSchema = whole.file;
    badSchema.replace(100, 300, QByteArray(300, '\xa5'));
    const QByteArray noise = QByteArray("[preferences]\nkey=value\n").repeated(400);
    for (const Image &bad :
         {Image{badHeader, {}}, Image{badSchema, {}}, Image{noise, {}}, Image{noise, whole.journal},
          Image{QByteArray(10000, '\0'), {}}, Image{QByteArray(), whole.journal}}) {
        SCOPED_TRACE(::testing::Message() << bad.file.left(4).toHex().constData() << bad.journal.size());
        lay(bad);
        PreferenceStore store(path());
        expectEmptyAndUsable(store);
        expectSetAside(bad);
    }
}

TEST_F(PreferenceDamageTest, ADamagedPageIsFoundWhenReadOrWritten)
{
    const Image whole = image(false);
    const auto pages = static_cast<int>(whole.file.size()) / PageSize;
    for (int page = 1; page < pages; ++page) {
        SCOPED_TRACE(page);
        Image bad = whole;
        bad.file.replace(page * PageSize, PageSize, QByteArray(PageSize, page % 2 ? '\0' : '\xa5'));
        lay(bad);
        PreferenceStore store(path());
        EXPECT_THAT(setAside(), ::testing::IsEmpty()) << "opening reads no more than the first page";
        for (int number = 0; number < RecordCount && setAside().isEmpty(); ++number) {
            if (page % 3 == 0) {
                EXPECT_TRUE(store.setString(keyOf(number), valueOf(number)));
                EXPECT_EQ(store.string(keyOf(number)), valueOf(number));
            } else if (const auto value = store.string(keyOf(number))) {
                EXPECT_EQ(*value, valueOf(number));
            }
        }
        ASSERT_THAT(setAside(), ::testing::SizeIs(1));
        if (page % 3 != 0) {
            expectSetAside(bad);
            expectEmptyAndUsable(store);
        }
        EXPECT_FALSE(store.isInMemory());
    }
}

TEST_F(PreferenceDamageTest, WithAJournalValuesAreWholeOrBothFilesAreSetAside)
{
    const Image whole = image(true);
    for (const int length : {0, 1, 100, PageSize, 2 * PageSize, 3 * PageSize + 7}) {
        SCOPED_TRACE(length);
        const Image cut{whole.file.left(length), whole.journal};
        lay(cut);
        PreferenceStore store(path());
        for (int number = 0; number < RecordCount; ++number)
            EXPECT_THAT(store.string(keyOf(number)),
                        ::testing::AnyOf(std::optional<QString>(valueOf(number)), std::nullopt));
        expectSetAside(cut);
        expectEmptyAndUsable(store);
    }
    lay(whole);
    const PreferenceStore store(path());
    for (int number = 0; number < RecordCount; ++number)
        EXPECT_EQ(store.string(keyOf(number)), valueOf(number)) << "a journal that was left behind is used";
}

TEST_F(PreferenceDamageTest, ADatabaseOfAnotherProgramIsSetAside)
{
    for (const QByteArray sql :
         {"CREATE TABLE other(x)", "CREATE TABLE preferences(x); PRAGMA user_version = 1",
          "CREATE TABLE other(x); PRAGMA user_version = 1"}) {
        SCOPED_TRACE(sql.constData());
        const QString original = m_home.path(QStringLiteral("original.sqlite"));
        QFile::remove(original);
        Database database;
        ASSERT_TRUE(database.open(original, Database::Mode::Create));
        ASSERT_TRUE(database.execute(sql));
        database.close();
        const Image other{bytes(original), {}};
        lay(other);
        PreferenceStore store(path());
        expectEmptyAndUsable(store);
        expectSetAside(other);
    }
}

TEST_F(PreferenceDamageTest, NothingThatWasSetAsideIsReplaced)
{
    for (int round = 0; round < 4; ++round) {
        m_home.write(QStringLiteral(".config/quillbay/preferences.sqlite"),
                     "noise" + QByteArray::number(round));
        EXPECT_TRUE(PreferenceStore(path()).setBoolean(QStringLiteral("key"), true));
    }
    QByteArrayList contents;
    for (const QString &name : setAside())
        contents << bytes(name);
    EXPECT_THAT(contents, ::testing::UnorderedElementsAre("noise0", "noise1", "noise2", "noise3"));
}

} // namespace quillbay
