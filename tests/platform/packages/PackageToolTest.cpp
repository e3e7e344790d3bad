#include "platform/linux/packages/PackageTool.h"

#include "platform/packages/FakeTools.h"
#include "platform/packages/OnWorker.h"

#include <QElapsedTimer>
#include <QFile>

#include <csignal>

#include <gtest/gtest.h>
#include <unistd.h>

namespace quillbay::platform {
namespace {

using namespace std::chrono_literals;
using End = PackageToolResult::End;

class PackageTool : public ::testing::Test
{
protected:
    PackageToolResult run(const QByteArray &script, std::chrono::milliseconds limit = 30s,
                          const QStringList &arguments = {})
    {
        m_tools.script(QStringLiteral("tool"), QStringLiteral("go"), script);
        return testing::onWorker([&] {
            return runPackageTool(m_tools.path(QStringLiteral("bin/tool")),
                                  QStringList{QStringLiteral("go")} + arguments, limit);
        });
    }

    testing::FakeTools m_tools;
};

TEST_F(PackageTool, HandsOverWhatWasWrittenAndTheCode)
{
    const PackageToolResult result = run("printf 'a\\377b\\n'; echo \"$2|$LC_ALL|$LANGUAGE|$(pwd)\"; echo no "
                                         ">&2; read -r line; echo \"[$line]\"; exit 3",
                                         30s, {QStringLiteral("--x $(reboot) '*'")});
    EXPECT_TRUE(result.exitedWith(3));
    EXPECT_EQ(result.output, "a\xff"
                             "b\n--x $(reboot) '*'|C||/\n[]\n");
    EXPECT_EQ(result.problem(), QStringLiteral("no"));
}

TEST_F(PackageTool, HasNoTerminalToAskOn)
{
    EXPECT_EQ(run("if (: < /dev/tty) 2> /dev/null; then echo yes; else echo no; fi").output, "no\n");
}

TEST_F(PackageTool, EndsWhatHangsWithAllThatItStarted)
{
    const QByteArray pidFile = m_tools.path(QStringLiteral("pid")).toUtf8();
    const PackageToolResult result =
        run("sleep 600 & echo $! > " + pidFile + "; echo started; trap '' TERM; wait; sleep 600", 500ms);
    EXPECT_EQ(result.end, End::TimedOut);
    EXPECT_EQ(result.output, "started\n");
    QFile file(QString::fromUtf8(pidFile));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const pid_t child = pid_t(file.readAll().trimmed().toInt());
    ASSERT_GT(child, 1);
    // Ended, it may still wait for a parent to look at it.
    const auto isRunning = [&] {
        QFile status(QStringLiteral("/proc/%1/stat").arg(child));
        return status.open(QIODevice::ReadOnly) && !status.readAll().contains(") Z ");
    };
    QElapsedTimer timer;
    for (timer.start(); isRunning() && timer.elapsed() < 10000;)
        ::usleep(5000);
    EXPECT_FALSE(isRunning());
}

TEST_F(PackageTool, EndsWhatWritesWithoutEnd)
{
    EXPECT_EQ(run("exec yes").end, End::TooMuch);
    const PackageToolResult errors = run("exec yes >&2");
    EXPECT_EQ(errors.end, End::TooMuch);
    EXPECT_TRUE(errors.output.isEmpty());
    // More than is bearable at once, and then a regular end.
    EXPECT_EQ(run("head -c 20000000 /dev/zero").end, End::TooMuch);
    EXPECT_EQ(run("head -c 1000000 /dev/zero").output.size(), 1000000);
}

TEST_F(PackageTool, TellsACrashAndAMissingProgramFromAnAnswer)
{
    EXPECT_EQ(run("echo partly; kill -SEGV $$").end, End::Crashed);
    const PackageToolResult missing =
        testing::onWorker([&] { return runPackageTool(m_tools.path(QStringLiteral("bin/none")), {}, 30s); });
    EXPECT_EQ(missing.end, End::NotStarted);
    EXPECT_FALSE(missing.exitedWith(0));
    EXPECT_EQ(testing::onWorker([] { return runPackageTool(QStringLiteral("sh"), {}, 30s); }).end,
              End::NotStarted);
}

TEST(PresentableText, IsOneShortLineWithoutControls)
{
    EXPECT_EQ(presentable("E: no\n\033[31m\tred\xe2\x80\xae!\n"), QStringLiteral("E: no [31m red !"));
    EXPECT_LE(presentable(QByteArray(100000, 'x')).size(), 400);
    EXPECT_FALSE(presentable("\xff\xfe text").isEmpty());
}

} // namespace
} // namespace quillbay::platform
