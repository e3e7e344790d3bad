#include "platform/linux/documents/XbelRecentDocuments.h"

#include "platform/linux/documents/XbelRecord.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillbay::platform {
namespace {

constexpr double now = 1'700'000'000;
constexpr double cutoff = now - 259200;

struct Entry
{
    QByteArray uri;
    QByteArray title = {};
    qint64 modified = 0; ///< Seconds before now.
    qint64 visited = 0;  ///< The same; 0 for the time of the change.
    bool isPrivate = false;
    QByteArray application = "editor";
};

class RecentDocumentsTest : public ::testing::Test
{
protected:
    RecentDocumentsTest()
    {
        QDir().mkpath(m_root.filePath(QStringLiteral("data")));
        QDir().mkpath(m_root.filePath(QStringLiteral("home/sub")));
        m_documents = std::make_unique<XbelRecentDocuments>(m_record, m_home);
    }

    QByteArray uri(const char *name) const { return "file://" + m_home.toUtf8() + '/' + name; }

    /// Makes a file in the home folder.
    void makeFile(const QString &name) const
    {
        QFile file(m_home + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    void write(const std::vector<Entry> &entries) const
    {
        QByteArray lines;
        for (const Entry &entry : entries) {
            lines += entry.uri + '\t' + entry.title + '\t' +
                     QByteArray::number(qint64(now) - entry.modified) + '\t' +
                     QByteArray::number(qint64(now) - (entry.visited ? entry.visited : entry.modified)) +
                     '\t' + (entry.isPrivate ? "1" : "0") + '\t' + entry.application + '\n';
        }
        QProcess writer;
        writer.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral("-B"), QStringLiteral(BOOKMARK_WRITER), m_record});
        writer.write(lines);
        writer.closeWriteChannel();
        ASSERT_TRUE(writer.waitForFinished(20000));
        ASSERT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().toStdString();
    }

    void writeRaw(const QByteArray &text) const
    {
        QFile file(m_record);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }

    /// The names that a query answers with, in order; "none" where it does not answer.
    QString gather(int most = 30)
    {
        QStringList names{QStringLiteral("none")};
        const auto connection =
            QObject::connect(m_documents.get(), &RecentDocuments::gathered, [&](const auto &documents) {
                names.clear();
                for (const RecentDocument &document : documents)
                    names.append(document.displayName);
            });
        QSignalSpy spy(m_documents.get(), &RecentDocuments::gathered);
        m_documents->query(cutoff, most);
        spy.wait();
        QObject::disconnect(connection);
        return names.join(u'|');
    }

    QTemporaryDir m_root;
    const QString m_record = m_root.filePath(QStringLiteral("data/recently-used.xbel"));
    const QString m_home = m_root.filePath(QStringLiteral("home"));
    std::unique_ptr<XbelRecentDocuments> m_documents;
};

TEST_F(RecentDocumentsTest, ReadsWhatTheToolkitsWrite)
{
    for (const QString &name :
         {QStringLiteral("old"), QStringLiteral("a"), QStringLiteral("sub/b & <c> é.txt"),
          QStringLiteral("mine"), QStringLiteral("secret"), QStringLiteral("dot")})
        makeFile(name);
    write({
        {.uri = uri("old"), .modified = 400000, .visited = 400000},
        {.uri = uri("a"), .title = "A & \"title\" <x>", .modified = 200, .visited = 400000},
        {.uri = uri("sub/b%20&%20%3Cc%3E%20%C3%A9.txt"), .modified = 400000, .visited = 100},
        {.uri = uri("mine"), .modified = 300, .isPrivate = true, .application = "Quillbay"},
        {.uri = uri("secret"), .modified = 50, .isPrivate = true},
        {.uri = uri("gone"), .modified = 50},
        {.uri = uri("sub"), .modified = 50},
        {.uri = uri("../data/recently-used.xbel"), .modified = 50},
        {.uri = "file:///etc/passwd", .modified = 50},
        {.uri = "https://example.org/a", .modified = 50},
        {.uri = uri("sub/../dot"), .modified = 259200},
        {.uri = uri("dot"), .modified = 259200},
    });
    EXPECT_EQ(gather(), QStringLiteral("b & <c> é.txt|A & \"title\" <x>|mine|dot"));
    EXPECT_EQ(gather(2), QStringLiteral("b & <c> é.txt|A & \"title\" <x>"));
}

TEST_F(RecentDocumentsTest, ARecordThatIsBrokenAnywhereHoldsNothing)
{
    EXPECT_EQ(gather(), QString()) << "missing";
    makeFile(QStringLiteral("a"));
    write({{.uri = uri("a")}});
    ASSERT_EQ(gather(), QStringLiteral("a"));
    QFile file(m_record);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    file.close();

    const qsizetype root = good.indexOf("<xbel");
    const std::pair<const char *, QByteArray> cases[] = {
        {"empty", {}},
        {"cut short", good.left(good.size() - 3)},
        {"more behind it", good + "<x/>"},
        {"other root", QByteArray(good).replace("xbel", "opml")},
        {"no XML", "{}"},
        {"undeclared entity", QByteArray(good).replace("file://", "&a;file://")},
        {"declared entity", QByteArray(good).insert(root, "<!DOCTYPE xbel [<!ENTITY a 'x'>]>")},
        {"invalid bytes", QByteArray(good).replace("editor", "\xff\xfe")},
        {"too large", good + QByteArray(XbelRecentDocuments::largestRecord, '\n')},
    };
    for (const auto &[name, text] : cases) {
        writeRaw(text);
        EXPECT_EQ(gather(), QString()) << name;
    }
    writeRaw(QByteArray(good).insert(root, "<!DOCTYPE xbel PUBLIC 'a' 'b'>"));
    EXPECT_EQ(gather(), QStringLiteral("a"));
    ASSERT_TRUE(QFile::remove(m_record));
    ASSERT_EQ(::mkfifo(qPrintable(m_record), 0600), 0);
    EXPECT_EQ(gather(), QString()) << "a pipe";
}

TEST(XbelRecord, ReadsTimesAndPathsAsTheyAreMeant)
{
    const auto read = [](const QByteArray &attributes) {
        return readBookmarks("<xbel><bookmark " + attributes + "/></xbel>");
    };
    const std::pair<const char *, double> times[] = {
        {"2023-11-14T22:13:20Z", 1700000000},
        {"2023-11-14T22:13:20.250000Z", 1700000000.25},
        {"2023-11-14T23:13:20+01:00", 1700000000},
        {"2023-11-14T22:13:20", 1700000000},
        {"yesterday", 0},
        {"", 0},
    };
    for (const auto &[text, expected] : times) {
        const auto bookmarks = read(QByteArray("href='file:///a' visited='") + text + "'");
        ASSERT_EQ(bookmarks.size(), 1) << text;
        EXPECT_EQ(bookmarks[0].lastUsed, expected) << text;
    }
    for (const char *href :
         {"", "a", "/a", "file:a", "file://host/a", "file:///a%00b", "file:///%", "sftp:///a"})
        EXPECT_TRUE(read(QByteArray("href='") + href + "'").isEmpty()) << href;
    EXPECT_EQ(read("href='file://localhost/a//b/../c%25'")[0].path, QStringLiteral("/a/c%"));
}

TEST_F(RecentDocumentsTest, OnlyTheNewestQueryAnswersAndAStoppedOneDoesNot)
{
    QList<int> answers;
    QObject::connect(m_documents.get(), &RecentDocuments::gathered,
                     [&](const auto &documents) { answers.append(int(documents.size())); });
    for (const char *name : {"a", "b", "c"})
        makeFile(QString::fromLatin1(name));
    write({{.uri = uri("a")}, {.uri = uri("b")}, {.uri = uri("c")}});
    m_documents->query(cutoff, 1);
    m_documents->stop();
    m_documents->query(cutoff, 2);
    m_documents->query(cutoff, 3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !answers.isEmpty(); }));
    EXPECT_EQ(answers, QList<int>{3});
    m_documents->query(cutoff, 3);
    m_documents.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, QList<int>{3});
}

TEST_F(RecentDocumentsTest, TellsOfARewrittenRecordAndNotOfItsNeighbours)
{
    QSignalSpy changed(m_documents.get(), &RecentDocuments::changed);
    ASSERT_EQ(gather(), QString());
    writeRaw("first");
    ASSERT_TRUE(changed.wait()) << "appeared";
    gather();
    write({});
    ASSERT_TRUE(changed.wait()) << "replaced";
    gather();
    writeRaw("second");
    ASSERT_TRUE(changed.wait()) << "in place";
    gather();
    ASSERT_TRUE(QFile::remove(m_record));
    ASSERT_TRUE(changed.wait()) << "removed";
    gather();

    // The neighbour's own watcher tells when a look at the folder has ended.
    XbelRecentDocuments neighbour(m_record + QStringLiteral(".new"), m_home);
    QSignalSpy ended(&neighbour, &RecentDocuments::changed);
    QSignalSpy answered(&neighbour, &RecentDocuments::gathered);
    neighbour.query(cutoff, 1);
    ASSERT_TRUE(answered.wait());
    changed.clear();
    QFile file(m_record + QStringLiteral(".new"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ASSERT_TRUE(ended.wait());
    writeRaw("third");
    ASSERT_TRUE(changed.wait());
    EXPECT_EQ(changed.count(), 1);
}

} // namespace
} // namespace quillbay::platform
