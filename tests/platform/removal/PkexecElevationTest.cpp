#include "platform/linux/uninstalling/removal/PkexecElevation.h"

#include "support/TestHome.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <optional>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

using Outcome = ElevationResult::Outcome;
using quillbay::testing::TestHome;

/// A pkexec of the test's own, first on PATH.
class PkexecElevationTest : public ::testing::Test
{
protected:
    PkexecElevationTest()
        : m_path(qgetenv("PATH"))
    {
        qputenv("PATH", QFile::encodeName(home.path(QStringLiteral("bin"))) + ':' + m_path);
        script("exit 99");
    }
    ~PkexecElevationTest() override { qputenv("PATH", m_path); }

    void script(const QByteArray &body) const
    {
        const QString file = home.write(QStringLiteral("bin/pkexec"), "#!/bin/sh\n" + body + '\n');
        ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0755), 0);
    }

    QByteArray content(const QString &name) const
    {
        QFile file(home.path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    ElevationResult run(const ElevatedCommand &command)
    {
        std::optional<ElevationResult> result;
        elevation->run(command, [&](const ElevationResult &given) {
            EXPECT_FALSE(result) << "answered twice";
            result = given;
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 20000));
        return result.value_or(ElevationResult{});
    }

    TestHome home;
    std::unique_ptr<PkexecElevation> elevation =
        std::make_unique<PkexecElevation>(ElevationHelper{QStringLiteral(QUILLBAY_ELEVATE), false});

private:
    QByteArray m_path;
};

} // namespace

TEST_F(PkexecElevationTest, HandsTheCommandToTheHelperAndReadsItsEnd)
{
    script("printf '%s\\n' \"$@\" > \"$HOME/asked\"\necho \"${SHELL-unset}\" \"$PWD\" > "
           "\"$HOME/around\"\nshift\nexec "
           "\"$@\"");
    qputenv("SHELL", "/no/such/shell");
    const QString file = home.write(QStringLiteral("it's $(here)"), "x");
    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(file).constData(), &status), 0);
    const FileStamp stamp{status.st_dev, status.st_ino, S_IFREG};
    const QByteArray path = QFile::encodeName(home.path()) + "/it'\\''s $(here)";
    const QByteArray line = "rm -rf '" + path + '\'';

    EXPECT_EQ(run({line, {stamp.device, stamp.inode + 1, stamp.kind}}).outcome, Outcome::Changed);
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_EQ(run({line, stamp}).outcome, Outcome::Done);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(content(QStringLiteral("asked")),
              "--disable-internal-agent\n" QUILLBAY_ELEVATE "\nfile=" + QByteArray::number(stamp.device) +
                  ':' + QByteArray::number(stamp.inode) + ":32768\n" + line + '\n');
    EXPECT_EQ(content(QStringLiteral("around")), "unset /\n");
    EXPECT_EQ(run({"rm -rf /", stamp}).outcome, Outcome::CommandFailed);
}

TEST_F(PkexecElevationTest, EndsOfPkexecAreToldApart)
{
    script("echo 'Error executing command as another user: Request dismissed' >&2; exit 126");
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::Refused);
    script("echo 'Error executing command as another user: No authentication agent found.' >&2; exit 127");
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::NoAgent);
    script("echo 'quillbay-elevate: started'; kill -9 $$");
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::CommandFailed);
    script(
        "echo 'quillbay-elevate: started'; head -c 1000000 /dev/zero; head -c 1000000 /dev/zero >&2; exit 4");
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::Changed);

    QFile::remove(home.path(QStringLiteral("bin/pkexec")));
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(home.path(QStringLiteral("bin"))));
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::Unavailable) << "no pkexec at all";
    qputenv("PATH", before);

    script("touch \"$HOME/started\"; exit 0");
    elevation =
        std::make_unique<PkexecElevation>(ElevationHelper{home.path(QStringLiteral("nowhere")), true});
    EXPECT_EQ(run({"rm -rf '/a'", {}}).outcome, Outcome::Unavailable) << "no helper";
    EXPECT_FALSE(QFile::exists(home.path(QStringLiteral("started")))) << "nobody is asked for nothing";
}

TEST_F(PkexecElevationTest, StartingDoesNotWaitAndTheEndOfTheProgramEndsTheQuestion)
{
    // A question that stays open until the test says otherwise.
    script("echo $$ > \"$HOME/pid\"; mkfifo \"$HOME/gate\"; read x < \"$HOME/gate\"");
    std::optional<ElevationResult> result;
    QElapsedTimer clock;
    clock.start();
    elevation->run({"rm -rf '/a'", {}}, [&](const ElevationResult &given) { result = given; });
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_FALSE(result);
    ASSERT_TRUE(QTest::qWaitFor([&] { return content(QStringLiteral("pid")).endsWith('\n'); }, 20000));
    const int pid = content(QStringLiteral("pid")).trimmed().toInt();
    ASSERT_GT(pid, 1);
    EXPECT_EQ(kill(pid, 0), 0);
    EXPECT_FALSE(result);
    elevation.reset();
    ASSERT_TRUE(result);
    EXPECT_EQ(result->outcome, Outcome::Abandoned);
    EXPECT_NE(kill(pid, 0), 0);
}

} // namespace quillbay::platform
