#include "foundation/PreferenceFixture.h"
#include "foundation/PreferenceRecord.h"
#include "foundation/PreferenceStore.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <csignal>
#include <map>
#include <memory>
#include <vector>

namespace quillbay {

using testing::PreferenceRecord;

namespace {

constexpr int Patience = 30'000;

/// The helper program; one line at a time, none waited for longer than the patience lasts.
class Writer
{
public:
    explicit Writer(const QStringList &arguments)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(PREFERENCE_WRITER), arguments);
    }
    ~Writer()
    {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(Patience))
            m_process.kill();
    }

    void say(const QByteArray &line)
    {
        m_process.write(line + '\n');
        m_process.waitForBytesWritten(Patience);
    }
    /// Empty when nothing came.
    QByteArray hear()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(Patience))
                return {};
        }
        return m_process.readLine().trimmed();
    }

private:
    QProcess m_process;
};

void spin(qint64 nanoseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.nsecsElapsed() < nanoseconds) {
    }
}

} // namespace

class PreferenceProcessesTest : public testing::PreferenceFixture
{
protected:
    static constexpr int ProcessCount = 4;
    static constexpr int WriteCount = 60;

    void letManyWrite()
    {
        std::vector<std::unique_ptr<Writer>> writers;
        for (int i = 0; i < ProcessCount; ++i)
            writers.push_back(std::make_unique<Writer>(
                QStringList{QStringLiteral("many"), path(), nameOf(i), QString::number(WriteCount)}));
        for (const auto &writer : writers)
            EXPECT_EQ(writer->hear(), "ready");
        for (const auto &writer : writers)
            writer->say("go");
        for (const auto &writer : writers)
            EXPECT_EQ(writer->hear().toInt(), WriteCount);
    }

    static QString nameOf(int process) { return QStringLiteral("p%1-").arg(process); }

    void expectAllWritten() const
    {
        const PreferenceStore store(path());
        const PreferenceStore suite = store.suite(QStringLiteral("Suite"));
        for (int process = 0; process < ProcessCount; ++process) {
            for (int i = 0; i < WriteCount; ++i) {
                const QString key = nameOf(process) + QString::number(i);
                EXPECT_EQ(store.string(key), key);
                EXPECT_EQ(suite.doubleValue(key), i) << qPrintable(key);
            }
        }
    }

    /// Raises a writer that begins with record `first`, and kills it once it has acknowledged `count` records
    /// and some nanoseconds more have passed. Answers the last record that it acknowledged.
    static int killAWriter(Writer &nursery, int first, int count, qint64 delay)
    {
        nursery.say(QByteArray::number(first));
        const QByteArrayList greeting = nursery.hear().split(' ');
        EXPECT_EQ(greeting.first(), "pid");
        const pid_t pid = greeting.last().toInt();
        int acknowledged = first - 1;
        const auto note = [&](const QByteArray &line) {
            EXPECT_EQ(line, QByteArray::number(acknowledged + 1));
            ++acknowledged;
        };
        while (acknowledged < first + count - 1 && !::testing::Test::HasFailure())
            note(nursery.hear());
        spin(delay);
        EXPECT_TRUE(pid > 1 && ::kill(pid, SIGKILL) == 0) << pid;
        for (QByteArray line = nursery.hear(); line != "gone 9" && !::testing::Test::HasFailure();
             line = nursery.hear())
            note(line);
        return acknowledged;
    }
};

TEST_F(PreferenceProcessesTest, NothingThatSeveralProcessesWriteAtOnceIsLost)
{
    letManyWrite();
    expectAllWritten();
    EXPECT_THAT(setAside(), ::testing::IsEmpty());
}

TEST_F(PreferenceProcessesTest, OneOfSeveralProcessesSetsADamagedFileAside)
{
    const QByteArray noise = QByteArray("noise").repeated(2000);
    m_home.write(QStringLiteral(".config/quillbay/preferences.sqlite"), noise);
    letManyWrite();
    expectAllWritten();
    ASSERT_THAT(setAside(), ::testing::SizeIs(1));
    EXPECT_EQ(bytes(setAside().first()), noise);
}

TEST_F(PreferenceProcessesTest, AReaderSeesWhatAnotherProcessWrote)
{
    const PreferenceStore store(path());
    Writer writer({QStringLiteral("many"), path(), QStringLiteral("other"), QStringLiteral("1")});
    EXPECT_EQ(writer.hear(), "ready");
    EXPECT_EQ(store.string(QStringLiteral("other0")), std::nullopt);
    writer.say("go");
    EXPECT_EQ(writer.hear(), "1");
    EXPECT_EQ(store.string(QStringLiteral("other0")), QStringLiteral("other0"));
}

TEST_F(PreferenceProcessesTest, AKilledWriterLosesNoAcknowledgedChangeAndLeavesNoHalfOne)
{
    constexpr int Rounds = 200;
    Writer nursery({QStringLiteral("raise"), path()});
    std::unique_ptr<PreferenceStore> bystander;
    std::map<int, int> lastOfKey;
    int next = 0;
    for (int round = 0; round < Rounds && !HasFailure(); ++round) {
        // With a bystander the journal outlives the killed process and grows; without, each reader after a
        // kill is the one that recovers it, and the disk is waited for.
        if (round % 40 == 0)
            bystander.reset();
        else if (round % 40 == 10)
            bystander = std::make_unique<PreferenceStore>(path());
        const int last = killAWriter(nursery, next, 1 + round % 6, (round * 37 % 100) * 8'000);
        for (; next <= last; ++next)
            lastOfKey[next % PreferenceRecord::KeyCount] = next;
        const PreferenceStore store(path());
        for (const auto &[key, number] : lastOfKey) {
            const bool isInFlight =
                next % PreferenceRecord::KeyCount == key && PreferenceRecord(next).isIn(store);
            EXPECT_TRUE(PreferenceRecord(number).isIn(store) || isInFlight)
                << "record " << number << ", round " << round;
        }
    }
    EXPECT_THAT(setAside(), ::testing::IsEmpty());
    EXPECT_GE(next, Rounds);
}

TEST_F(PreferenceProcessesTest, AProcessKilledWhileItMakesTheFileLeavesAUsableOne)
{
    Writer nursery({QStringLiteral("raise"), path()});
    for (int round = 0; round < 40 && !HasFailure(); ++round) {
        QDir(folder()).removeRecursively();
        const int last = killAWriter(nursery, 0, 0, round * 150'000);
        PreferenceStore store(path());
        // The one in flight may have replaced the oldest that could still be there.
        for (int number = std::max(0, last + 2 - PreferenceRecord::KeyCount); number <= last; ++number)
            EXPECT_TRUE(PreferenceRecord(number).isIn(store)) << number << ", round " << round;
        EXPECT_TRUE(store.setBoolean(QStringLiteral("after"), true))
            << qPrintable(lines().join(QLatin1Char('\n')));
        EXPECT_THAT(setAside(), ::testing::IsEmpty());
    }
}

TEST_F(PreferenceProcessesTest, WhereNothingMayBeWrittenTheOldValuesAreReadAndNewOnesLastTheSession)
{
    constexpr auto Read = QFile::ReadOwner;
    constexpr auto Write = QFile::WriteOwner;
    constexpr auto Enter = QFile::ExeOwner;
    const auto use = [&] { return Writer({QStringLiteral("unprivileged"), path()}).hear(); };
    const auto useWith = [&](QFile::Permissions file, QFile::Permissions ofFolder) {
        EXPECT_TRUE(QFile::setPermissions(path(), file));
        EXPECT_TRUE(QFile::setPermissions(folder(), ofFolder));
        const QByteArray result = use();
        EXPECT_TRUE(QFile::setPermissions(folder(), Read | Write | Enter));
        EXPECT_TRUE(QFile::setPermissions(path(), Read | Write));
        PreferenceStore(path()).setString(QStringLiteral("key"), QStringLiteral("old"));
        return result;
    };
    EXPECT_EQ(use(), "missing kept new");
    EXPECT_EQ(useWith(Read | Write, Read | Write | Enter), "new kept new");
    EXPECT_EQ(useWith(Read, Read | Write | Enter), "old unkept new") << "read-only file";
    EXPECT_EQ(useWith(Read, Read | Enter), "old unkept new") << "read-only file in a read-only folder";
    EXPECT_EQ(useWith(Read | Write, Read | Enter), "old unkept new") << "read-only folder";
    EXPECT_EQ(useWith({}, Read | Write | Enter), "missing unkept new") << "file without any permission";
    EXPECT_EQ(useWith(Read | Write, Read | Write | Enter), "old kept new");

    ASSERT_TRUE(QDir(folder()).removeRecursively());
    ASSERT_TRUE(QDir().mkdir(folder(), Read | Enter));
    EXPECT_EQ(use(), "missing unkept new") << "no file, and none can be made";
    EXPECT_THAT(QDir(folder()).entryList(QDir::Files), ::testing::IsEmpty());
}

} // namespace quillbay
