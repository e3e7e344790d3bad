#include "foundation/PreferenceStore.h"

#include "foundation/Database.h"
#include "foundation/PreferenceFixture.h"
#include "foundation/Statement.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QThreadPool>

#include <array>
#include <cmath>
#include <csignal>

#include <sys/resource.h>

namespace quillbay {

namespace {

const QString Key = QStringLiteral("key");

/// Which readers find a value: data, string, stringArray, dictionary, boolean, double.
QString readersThatFind(const PreferenceStore &store, const QString &key)
{
    const std::array found{store.data(key).has_value(),        store.string(key).has_value(),
                           store.stringArray(key).has_value(), store.dictionary(key).has_value(),
                           store.boolean(key).has_value(),     store.doubleValue(key).has_value()};
    QString names;
    for (size_t i = 0; i < found.size(); ++i)
        names += found[i] ? QLatin1Char("dsaobr"[i]) : QLatin1Char('-');
    return names;
}

QFile::Permissions permissionsOf(const QString &path)
{
    constexpr auto Everyone = QFile::Permissions(0x7077);
    return QFile::permissions(path) & Everyone;
}

} // namespace

class PreferenceStoreTest : public testing::PreferenceFixture
{
protected:
    /// Runs `sql` on the file, as another program would; the first column of the first row as text.
    QString sql(const QByteArray &text) const
    {
        Database database;
        EXPECT_TRUE(database.open(path(), Database::Mode::Create));
        Statement statement(database, text);
        return statement.step() == Statement::Result::Row ? statement.text(0) : statement.errorText();
    }
};

TEST_F(PreferenceStoreTest, ValuesOfEveryTypeAreThereForTheNextInstance)
{
    const QByteArray data("\0half\xff\0", 7);
    const QString text = QString::fromUtf8("a\xF0\x9F\x98\x80'\"\n") + QChar(0) + QStringLiteral("z");
    const QStringList array{text, QString(), QStringLiteral("b")};
    const QJsonObject dictionary{{text, 1721900000.123456},
                                 {QStringLiteral("n"), QJsonArray{true, text, 9007199254740993LL}}};
    {
        PreferenceStore store(path());
        EXPECT_TRUE(store.setData(QStringLiteral("d"), data));
        EXPECT_TRUE(store.setString(text, text));
        EXPECT_TRUE(store.setStringArray(QStringLiteral("a"), array));
        EXPECT_TRUE(store.setDictionary(QStringLiteral("o"), dictionary));
        EXPECT_TRUE(store.setBoolean(QStringLiteral("yes"), true));
        EXPECT_TRUE(store.setBoolean(QStringLiteral("no"), false));
        EXPECT_TRUE(store.setDouble(QStringLiteral("r"), 0.1));
        EXPECT_TRUE(store.setDouble(QStringLiteral("whole"), 3));
        EXPECT_TRUE(store.setDouble(QStringLiteral("infinite"), INFINITY));
    }
    const PreferenceStore store(path());
    EXPECT_EQ(store.data(QStringLiteral("d")), data);
    EXPECT_EQ(store.string(text), text);
    EXPECT_EQ(store.stringArray(QStringLiteral("a")), array);
    EXPECT_EQ(store.dictionary(QStringLiteral("o")), dictionary);
    EXPECT_EQ(store.boolean(QStringLiteral("yes")), true);
    EXPECT_EQ(store.boolean(QStringLiteral("no")), false);
    EXPECT_EQ(store.doubleValue(QStringLiteral("r")), 0.1);
    EXPECT_EQ(store.doubleValue(QStringLiteral("whole")), 3.0);
    EXPECT_EQ(store.doubleValue(QStringLiteral("infinite")), INFINITY);
    EXPECT_THAT(lines(), ::testing::IsEmpty());
}

TEST_F(PreferenceStoreTest, AValueIsFoundByItsOwnTypeAlone)
{
    PreferenceStore store(path());
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("------"));
    store.setData(Key, "[]");
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("d-----"));
    store.setString(Key, QStringLiteral("{}"));
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("-s----"));
    store.setStringArray(Key, {});
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("--a---"));
    store.setDictionary(Key, {});
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("---o--"));
    store.setBoolean(Key, false);
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("----b-"));
    store.setDouble(Key, 0);
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("-----r"));
    EXPECT_FALSE(store.setDouble(Key, NAN));
    EXPECT_EQ(store.doubleValue(Key), 0.0) << "what is refused leaves the old value";
    EXPECT_TRUE(store.remove(Key));
    EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("------"));
    EXPECT_TRUE(store.remove(Key));
}

TEST_F(PreferenceStoreTest, EmptyIsNotMissing)
{
    PreferenceStore store(path());
    store.setData(QStringLiteral("d"), QByteArray());
    store.setString(QStringLiteral("s"), QString());
    store.setStringArray(QStringLiteral("a"), {});
    store.setStringArray(QStringLiteral("one"), {QString()});
    store.setDictionary(QStringLiteral("o"), {});
    store.setString(QString(), QStringLiteral("no key"));
    const PreferenceStore again(path());
    EXPECT_EQ(again.data(QStringLiteral("d")), QByteArray());
    EXPECT_EQ(again.string(QStringLiteral("s")), QString());
    EXPECT_EQ(again.stringArray(QStringLiteral("a")), QStringList());
    EXPECT_EQ(again.stringArray(QStringLiteral("one")), QStringList{QString()});
    EXPECT_EQ(again.dictionary(QStringLiteral("o")), QJsonObject());
    EXPECT_EQ(again.string(QString()), QStringLiteral("no key"));
}

TEST_F(PreferenceStoreTest, DomainsAreApartAndViewsShareOneFile)
{
    std::optional<PreferenceStore> store(path());
    PreferenceStore suite = store->suite(QStringLiteral("Suite"));
    store->setString(Key, QStringLiteral("standard"));
    suite.setBoolean(Key, true);
    EXPECT_EQ(store->string(Key), QStringLiteral("standard"));
    EXPECT_EQ(store->suite(QStringLiteral("Suite")).boolean(Key), true);
    EXPECT_EQ(suite.suite(QStringLiteral("standard")).string(Key), QStringLiteral("standard"));
    store.reset();
    EXPECT_TRUE(suite.setBoolean(Key, false)) << "a view keeps the file open";
    EXPECT_EQ(PreferenceStore(path()).suite(QStringLiteral("Suite")).boolean(Key), false);
}

TEST_F(PreferenceStoreTest, LayoutIsAsWritten)
{
    PreferenceStore store(path());
    store.setData(QStringLiteral("data"), "x");
    store.setString(QStringLiteral("string"), QStringLiteral("x"));
    store.setStringArray(QStringLiteral("stringArray"), {QStringLiteral("\"x")});
    store.suite(QStringLiteral("Suite")).setDictionary(QStringLiteral("dictionary"), {{Key, 1.5}});
    store.setBoolean(QStringLiteral("boolean"), true);
    store.setDouble(QStringLiteral("double"), 2);
    EXPECT_EQ(
        sql("SELECT group_concat(line, '; ') FROM (SELECT domain || '.' || key || '=' || type || ' ' ||"
            " typeof(value) || ' ' || value AS line FROM preferences ORDER BY key)"),
        QStringLiteral("standard.boolean=boolean integer 1; standard.data=data blob x; "
                       "Suite.dictionary=dictionary text {\"key\":1.5}; standard.double=double real 2.0; "
                       "standard.string=string text x; standard.stringArray=stringArray text [\"\\\"x\"]"));
    EXPECT_EQ(sql("PRAGMA user_version"), QStringLiteral("1"));
    EXPECT_EQ(sql("PRAGMA journal_mode"), QStringLiteral("wal"));
}

TEST_F(PreferenceStoreTest, StoredValuesThatAreNotWhatTheirTypeSaysReadAsMissing)
{
    PreferenceStore store(path());
    for (const QByteArray values :
         {"'data', 'text'", "'string', x'00'", "'stringArray', '[1]'", "'stringArray', '{}'",
          "'stringArray', ''", "'stringArray', '[\"a'", "'dictionary', '[]'", "'dictionary', ''",
          "'boolean', 'true'", "'double', NULL", "'other', 'text'"}) {
        sql("INSERT OR REPLACE INTO preferences VALUES('standard', 'key', " + values + ")");
        EXPECT_EQ(readersThatFind(store, Key), QStringLiteral("------")) << values.constData();
    }
    EXPECT_TRUE(store.setBoolean(Key, true));
    EXPECT_EQ(store.boolean(Key), true);
}

TEST_F(PreferenceStoreTest, WhatIsRememberedOfAValueCountsOnlyWhileTheFileHasIt)
{
    const QStringList mine{QStringLiteral("mine")};
    const QJsonObject dates{{Key, 1.5}};
    PreferenceStore store(path());
    PreferenceStore other(path());
    store.setStringArray(Key, mine);
    EXPECT_TRUE(store.stringArray(Key)->isSharedWith(*store.stringArray(Key))) << "decoded once";
    other.setStringArray(Key, {});
    EXPECT_EQ(store.stringArray(Key), QStringList());
    other.setDictionary(Key, dates);
    EXPECT_EQ(store.stringArray(Key), std::nullopt);
    EXPECT_EQ(store.dictionary(Key), dates);
    other.remove(Key);
    EXPECT_TRUE(store.setDictionary(Key, dates)) << "the one it has just read";
    EXPECT_EQ(other.dictionary(Key), dates);
    other.setStringArray(Key, mine);
    EXPECT_TRUE(store.setDictionary(Key, dates));
    EXPECT_EQ(other.dictionary(Key), dates);
}

TEST_F(PreferenceStoreTest, WhatTextCannotHoldReadsAsItIsInTheFile)
{
    PreferenceStore store(path());
    store.setDictionary(QStringLiteral("d"), {{Key, INFINITY}});
    EXPECT_EQ(store.dictionary(QStringLiteral("d"))->value(Key), QJsonValue(QJsonValue::Null));
    sql("INSERT OR REPLACE INTO preferences VALUES('standard', 'key', 'stringArray',"
        " CAST(x'5b22ff225d' AS TEXT))");
    EXPECT_EQ(store.stringArray(Key), QStringList(QString(QChar::ReplacementCharacter)));
}

TEST_F(PreferenceStoreTest, ALargeValueIsKept)
{
    QByteArray large(50'000'000, '\0');
    for (qsizetype i = 0; i < large.size(); i += 997)
        large[i] = static_cast<char>(i % 251);
    {
        PreferenceStore store(path());
        ASSERT_TRUE(store.setData(Key, large));
        ASSERT_TRUE(store.setBoolean(QStringLiteral("small"), true));
    }
    PreferenceStore store(path());
    EXPECT_TRUE(store.data(Key) == large);
    EXPECT_EQ(store.boolean(QStringLiteral("small")), true);
}

TEST_F(PreferenceStoreTest, TheJournalIsMergedWhileTheStoreIsOpen)
{
    PreferenceStore store(path());
    constexpr int megabyte = 1 << 20;
    for (int round = 0; round < 40; ++round) {
        ASSERT_TRUE(store.setData(Key, QByteArray(megabyte, char('a' + round % 26))));
        QThreadPool::globalInstance()->waitForDone();
    }
    EXPECT_GT(QFileInfo(path()).size(), megabyte);
    EXPECT_LT(QFileInfo(path() + QStringLiteral("-wal")).size(), 16 * megabyte);
    EXPECT_EQ(PreferenceStore(path()).data(Key), QByteArray(megabyte, 'n'));
    PreferenceStore(path()).setData(Key, "of another");
    EXPECT_EQ(store.data(Key), QByteArray("of another"));
}

TEST_F(PreferenceStoreTest, AnEqualValueIsNotWrittenAgain)
{
    const QStringList array(50, QStringLiteral("file:///usr/share/applications/editor.desktop"));
    PreferenceStore(path()).setStringArray(Key, array);
    PreferenceStore store(path());
    const auto journalSize = [&] { return QFileInfo(path() + QStringLiteral("-wal")).size(); };
    EXPECT_TRUE(store.setStringArray(Key, array));
    EXPECT_EQ(journalSize(), 0);
    EXPECT_TRUE(store.setStringArray(Key, array.mid(1)));
    EXPECT_GT(journalSize(), 0);
}

TEST_F(PreferenceStoreTest, NobodyElseMayReadTheFiles)
{
    constexpr auto OwnerOnly = QFile::ReadOwner | QFile::WriteOwner;
    PreferenceStore store(path());
    store.setBoolean(Key, true);
    for (const char *suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(permissionsOf(path() + QLatin1String(suffix)), OwnerOnly) << suffix;
    EXPECT_EQ(permissionsOf(folder()), OwnerOnly | QFile::ExeOwner);
}

TEST_F(PreferenceStoreTest, FilesThatOthersMayReadAreClosedToThem)
{
    PreferenceStore(path()).setBoolean(Key, true);
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::Permissions(0x6064)));
    const PreferenceStore store(path());
    EXPECT_EQ(store.boolean(Key), true);
    for (const char *suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(permissionsOf(path() + QLatin1String(suffix)), QFile::ReadOwner | QFile::WriteOwner)
            << suffix;
}

TEST_F(PreferenceStoreTest, WhatIsSetAsideIsClosedToOthersAsWell)
{
    // A password may stand in a journal whose file is lost.
    for (const char *suffix : {"", "-wal"}) {
        const QString name = QStringLiteral(".config/quillbay/preferences.sqlite") + QLatin1String(suffix);
        m_home.write(name, QByteArray(100, 'p'));
        ASSERT_TRUE(QFile::setPermissions(m_home.path(name), QFile::Permissions(0x6044)));
    }
    EXPECT_TRUE(PreferenceStore(path()).setBoolean(Key, true));
    ASSERT_THAT(setAside(), ::testing::SizeIs(1));
    for (const char *suffix : {"", "-wal"})
        EXPECT_EQ(permissionsOf(setAside().first() + QLatin1String(suffix)),
                  QFile::ReadOwner | QFile::WriteOwner)
            << suffix;
}

TEST_F(PreferenceStoreTest, ALinkedFileStaysLinked)
{
    const QString target = m_home.path(QStringLiteral("elsewhere.sqlite"));
    ASSERT_TRUE(QDir().mkpath(folder()));
    ASSERT_TRUE(QFile::link(target, path()));
    EXPECT_TRUE(PreferenceStore(path()).setBoolean(Key, true));
    EXPECT_EQ(PreferenceStore(target).boolean(Key), true);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(permissionsOf(target), QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(PreferenceStoreTest, TheDefaultPathFollowsTheConfigurationFolder)
{
    EXPECT_EQ(PreferenceStore::defaultPath(), path());
    qputenv("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(PreferenceStore::defaultPath(), path()) << "only an absolute path counts";
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(PreferenceStore::defaultPath(), path());
}

TEST_F(PreferenceStoreTest, AFolderThatCannotBeMadeLeavesTheSession)
{
    m_home.write(QStringLiteral("file"), "in the way");
    PreferenceStore store(m_home.path(QStringLiteral("file/quillbay/preferences.sqlite")));
    PreferenceStore suite = store.suite(QStringLiteral("Suite"));
    EXPECT_TRUE(store.isInMemory());
    EXPECT_FALSE(store.setString(Key, QStringLiteral("value")));
    EXPECT_FALSE(suite.setBoolean(Key, true));
    EXPECT_EQ(store.string(Key), QStringLiteral("value"));
    EXPECT_EQ(suite.boolean(Key), true);
    EXPECT_FALSE(store.remove(Key));
    EXPECT_EQ(store.string(Key), std::nullopt);
    EXPECT_THAT(lines(), ::testing::SizeIs(1));

    ASSERT_TRUE(QDir().mkpath(path()));
    PreferenceStore onFolder(path());
    EXPECT_FALSE(onFolder.setBoolean(Key, true)) << "a folder has the name of the file";
    EXPECT_EQ(onFolder.boolean(Key), true);
}

TEST_F(PreferenceStoreTest, AFileOfALaterLayoutIsReadAndLeftAlone)
{
    PreferenceStore(path()).setString(Key, QStringLiteral("old"));
    sql("ALTER TABLE preferences ADD COLUMN more");
    sql("PRAGMA user_version = 2");
    const QByteArray before = bytes(path());
    {
        PreferenceStore store(path());
        EXPECT_EQ(store.string(Key), QStringLiteral("old"));
        EXPECT_FALSE(store.setString(Key, QStringLiteral("new")));
        EXPECT_EQ(store.string(Key), QStringLiteral("new"));
    }
    EXPECT_EQ(bytes(path()), before);
    EXPECT_THAT(setAside(), ::testing::IsEmpty());
    EXPECT_THAT(lines(), ::testing::SizeIs(1));
}

TEST_F(PreferenceStoreTest, AChangeThatFindsNoRoomIsReportedAndLeavesTheOldValue)
{
    PreferenceStore store(path());
    ASSERT_TRUE(store.setData(Key, "old"));
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{400'000, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
    const bool isKept = store.setData(Key, QByteArray(2'000'000, 'x'));
    const std::optional<QByteArray> value = store.data(Key);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, previous);

    EXPECT_FALSE(isKept);
    EXPECT_EQ(value, QByteArray("old"));
    EXPECT_THAT(lines(), ::testing::SizeIs(1));
    EXPECT_TRUE(store.setData(Key, QByteArray(2'000'000, 'x'))) << "there is room again";
    EXPECT_THAT(setAside(), ::testing::IsEmpty());
}

TEST_F(PreferenceStoreTest, AChangeAfterTheFileWentAwayIsInTheNewOne)
{
    PreferenceStore store(path());
    ASSERT_TRUE(store.setString(Key, QStringLiteral("old")));
    ASSERT_TRUE(QDir(folder()).removeRecursively());
    EXPECT_TRUE(store.setString(QStringLiteral("other"), QStringLiteral("new")));
    EXPECT_EQ(PreferenceStore(path()).string(QStringLiteral("other")), QStringLiteral("new"));
    EXPECT_EQ(store.string(Key), std::nullopt);
    EXPECT_FALSE(store.isInMemory());
}

} // namespace quillbay
