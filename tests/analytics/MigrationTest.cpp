#include "analytics/ArchiveReader.h"
#include "analytics/LogRecord.h"
#include "analytics/MarlpostPersistence.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>

#include <gmock/gmock.h>
#include <plist/plist.h>

namespace quillbay {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

QByteArray xml(const QByteArray &value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
           "1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">" +
           value + "</plist>\n";
}

QByteArray binary(const QByteArray &value)
{
    const QByteArray text = xml(value);
    plist_t tree = nullptr;
    char *bytes = nullptr;
    std::uint32_t size = 0;
    plist_from_xml(text.constData(), std::uint32_t(text.size()), &tree);
    plist_to_bin(tree, &bytes, &size);
    const QByteArray result(bytes, qsizetype(size));
    std::free(bytes);
    plist_free(tree);
    return result;
}

std::optional<MarlpostType> read(const QByteArray &bytes)
{
    return readPropertyList({bytes.constData(), std::size_t(bytes.size())});
}

/// A binary list in which each array holds the next one twice: 2^depth values in a few hundred bytes.
QByteArray doublingArrays(int depth)
{
    QByteArray bytes = "bplist00";
    QByteArray offsets;
    for (int i = 0; i < depth; ++i) {
        offsets += char(bytes.size() >> 8);
        offsets += char(bytes.size() & 0xff);
        bytes += '\xA2';
        bytes += QByteArray(2, char(i + 1));
    }
    offsets += char(bytes.size() >> 8);
    offsets += char(bytes.size() & 0xff);
    bytes += '\x09';
    const qsizetype table = bytes.size();
    bytes += offsets + QByteArray(6, '\0') + '\x02' + '\x01';
    for (const qsizetype number : {qsizetype(depth + 1), qsizetype(0), table}) {
        bytes += QByteArray(6, '\0');
        bytes += char(number >> 8);
        bytes += char(number & 0xff);
    }
    return bytes;
}

TEST(ArchiveReaderTest, BothFormsGiveTheSameValues)
{
    const QByteArray value =
        "<dict><key>s</key><string>é</string><key>i</key><integer>-5</integer><key>r</key>"
        "<real>0.5</real><key>b</key><true/><key>d</key><date>2024-02-29T01:02:03Z</date>"
        "<key>a</key><array><string></string><dict/></array><key>x</key><data>AA==</data></dict>";
    const MarlpostType expected =
        MarlpostDictionary{{"s", "é"},
                           {"i", -5},
                           {"r", 0.5},
                           {"b", true},
                           {"d", MarlpostType::Date(std::chrono::sys_days(std::chrono::year(2024) / 2 / 29) +
                                                    std::chrono::seconds(3723))},
                           {"a", MarlpostArray{"", MarlpostDictionary()}}};
    EXPECT_EQ(read(xml(value)), expected);
    EXPECT_EQ(read(binary(value)), expected);
}

TEST(ArchiveReaderTest, RefusesWhatIsNoListOrTooDeepForTheLibrary)
{
    constexpr int Levels = 200'000;
    QByteArray arrays;
    for (int i = 0; i < Levels; ++i)
        arrays += "<array>";
    const QByteArray cut = binary("<array><string>text</string></array>");
    EXPECT_FALSE(read("{}"));
    EXPECT_FALSE(read("bplist00"));
    EXPECT_FALSE(read(xml(arrays)));
    EXPECT_FALSE(read(doublingArrays(60)));
    EXPECT_TRUE(read(doublingArrays(3)));
    for (qsizetype size = 0; size < cut.size(); ++size)
        EXPECT_FALSE(read(cut.left(size))) << size;
}

class MigrationTest : public ::testing::Test
{
protected:
    void archive(const char *kind, const QByteArray &bytes)
    {
        home.write(QStringLiteral("cache/marlpost-name-") + QLatin1String(kind), bytes);
    }
    QStringList files() const
    {
        return QDir(home.path(QStringLiteral("cache")))
            .entryList({QStringLiteral("marlpost-*")}, QDir::Files, QDir::Name);
    }
    std::vector<std::string> rows(PersistenceType type, bool flag = false)
    {
        std::vector<std::string> texts;
        for (const StoredEntity &row : persistence.loadEntitiesInBatch(type, MPDB::AllRows, flag))
            texts.push_back(row.json);
        return texts;
    }

    testing::TestHome home;
    testing::LogRecord log;
    MarlpostPersistence persistence{
        "name",
        {home.path(QStringLiteral("cache")), home.path(QStringLiteral("preferences.sqlite"))},
        MarlpostPersistence::defaultOptions()};
};

TEST_F(MigrationTest, TakesOverEveryArchiveAndDeletesIt)
{
    EXPECT_FALSE(persistence.needMigration());
    archive("events", binary("<array><dict><key>event</key><string>a</string></dict>"
                             "<dict><key>event</key><string>b</string></dict></array>"));
    archive("people", xml("<array><dict><key>$distinct_id</key><string>p</string></dict></array>"));
    archive("groups", xml("<array><dict><key>$group_key</key><string>g</string></dict></array>"));
    archive("properties",
            xml("<dict><key>superProperties</key><dict><key>plan</key><integer>3</integer></dict>"
                "<key>timedEvents</key><dict><key>e</key><real>1.5</real></dict>"
                "<key>distinctId</key><string>d</string><key>anonymousId</key><string>an</string>"
                "<key>userId</key><string>u</string><key>alias</key><string>al</string>"
                "<key>hadPersistedDistinctId</key><true/><key>peopleDistinctId</key><string>pd</string>"
                "<key>peopleUnidentifiedQueue</key><array><dict><key>$distinct_id</key>"
                "<string>later</string></dict></array></dict>"));
    archive("optOutStatus", binary("<true/>"));
    EXPECT_TRUE(persistence.needMigration());
    persistence.migrate();

    EXPECT_FALSE(persistence.needMigration());
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_THAT(rows(PersistenceType::Events), ElementsAre(R"({"event":"a"})", R"({"event":"b"})"));
    EXPECT_THAT(rows(PersistenceType::People), ElementsAre(R"({"$distinct_id":"p"})"));
    EXPECT_THAT(rows(PersistenceType::People, true), ElementsAre(R"({"$distinct_id":"later"})"));
    EXPECT_THAT(rows(PersistenceType::Groups), ElementsAre(R"({"$group_key":"g"})"));
    EXPECT_EQ(persistence.loadSuperProperties(), (MarlpostDictionary{{"plan", 3}}));
    EXPECT_EQ(persistence.loadTimedEvents(), (MarlpostDictionary{{"e", 1.5}}));
    EXPECT_EQ(persistence.loadIdentity(), (MarlpostIdentity{"d", "pd", "an", "u", "al", true}));
    EXPECT_EQ(persistence.loadOptOutStatusFlag(), true);
}

TEST_F(MigrationTest, UnreadableArchivesAreSetAsideAndTheOthersTaken)
{
    archive("events", "no list");
    archive("people", xml("<string>no queue</string>"));
    archive("optOutStatus", xml("<false/>"));
    persistence.migrate();
    EXPECT_THAT(files(), ElementsAre(QStringLiteral("marlpost-name-events.unreadable"),
                                     QStringLiteral("marlpost-name-people.unreadable")));
    EXPECT_FALSE(persistence.needMigration());
    EXPECT_EQ(persistence.loadOptOutStatusFlag(), false);
}

TEST_F(MigrationTest, ArchiveStaysUntilItsRowsAreStored)
{
    archive("events", xml("<array><dict><key>event</key><string>a</string></dict></array>"));
    // A folder in the place of the database.
    const QString database = home.path(QStringLiteral("cache/name_MPDB.sqlite"));
    ASSERT_TRUE(QDir().mkpath(database));
    persistence.migrate();
    EXPECT_TRUE(persistence.needMigration());
    ASSERT_TRUE(QDir().rmdir(database));
    persistence.migrate();
    EXPECT_FALSE(persistence.needMigration());
    EXPECT_THAT(rows(PersistenceType::Events), ElementsAre(R"({"event":"a"})"));
}

} // namespace

} // namespace quillbay
