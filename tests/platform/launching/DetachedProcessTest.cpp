#include "platform/linux/launching/DetachedProcess.h"

#include "ProbeReport.h"
#include "support/TestHome.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillbay::platform;
using namespace quillbay::testing;
using ::testing::UnorderedElementsAre;

namespace {

DetachedProcess probe(const QString &file)
{
    DetachedProcess process;
    process.program = QFile::encodeName(probeProgram());
    process.arguments = {"probe", QFile::encodeName(file)};
    process.environment = {"PATH=/usr/bin:/bin", "KEPT=1 2"};
    process.workingDirectory = "/usr";
    return process;
}

// Runs the waiting helper in a terminal of its own, lets it start the probe, and ends it as told.
template <typename End>
void outlives(const TestHome &home, End end)
{
    const QString report = home.path(QStringLiteral("report"));
    const QString signal = home.path(QStringLiteral("go-on"));
    QFile::remove(report);
    const QByteArrayList words{LAUNCH_AND_WAIT, QFile::encodeName(probeProgram()), QFile::encodeName(report),
                               "--until", QFile::encodeName(signal)};
    std::vector<char *> arguments;
    for (const QByteArray &word : words)
        arguments.push_back(const_cast<char *>(word.constData()));
    arguments.push_back(nullptr);
    int terminal = -1;
    const pid_t helper = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(helper, 0);
    if (helper == 0) {
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    const auto started = awaitReport(report);
    end(helper, terminal);
    int status = 0;
    if (QTest::qWaitFor([&] { return waitpid(helper, &status, WNOHANG) == helper; }, 10'000)) {
        EXPECT_TRUE(WIFSIGNALED(status));
    } else {
        ADD_FAILURE() << "the helper did not end";
        kill(helper, SIGKILL);
        waitpid(helper, &status, 0);
    }
    ASSERT_TRUE(started);
    EXPECT_NE(started->session, helper);
    EXPECT_EQ(kill(static_cast<pid_t>(started->process), 0), 0);
    home.write(QStringLiteral("go-on"), "");
    EXPECT_TRUE(awaitFile(signal + QStringLiteral(".seen"))) << "the program ended with its launcher";
}

} // namespace

TEST(DetachedProcess, BelongsToItself)
{
    const TestHome home;
    const QString file = home.path(QStringLiteral("report"));
    DetachedProcess process = probe(file);
    process.pidVariable = "OWN_PID";

    const int leaked = open("/dev/zero", O_RDONLY);
    ASSERT_GE(leaked, 3);
    ASSERT_EQ(dup2(leaked, 250), 250);
    const auto oldPipe = std::signal(SIGPIPE, SIG_IGN);
    const auto oldHangUp = std::signal(SIGHUP, SIG_IGN);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const DetachedStart start = startDetached(process);
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, &before, &after);
    std::signal(SIGPIPE, oldPipe);
    std::signal(SIGHUP, oldHangUp);
    close(leaked);
    close(250);

    EXPECT_EQ(start.failed, DetachedStart::Step::None);
    EXPECT_TRUE(sigismember(&after, SIGTERM));
    EXPECT_FALSE(sigismember(&after, SIGINT));
    const auto report = awaitReport(file);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->process, start.pid);
    EXPECT_EQ(report->session, start.pid);
    EXPECT_NE(report->parent, getpid());
    EXPECT_EQ(report->directory, "/usr");
    EXPECT_THAT(report->descriptors, UnorderedElementsAre("0 /dev/null", "1 /dev/null", "2 /dev/null"));
    EXPECT_EQ(report->blockedSignals.toULongLong(nullptr, 16), 0U);
    EXPECT_EQ(report->ignoredSignals.toULongLong(nullptr, 16), 0U);
    EXPECT_EQ(report->environment,
              (QMap<QByteArray, QByteArray>{
                  {"PATH", "/usr/bin:/bin"}, {"KEPT", "1 2"}, {"OWN_PID", QByteArray::number(start.pid)}}));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left to be reaped";
}

TEST(DetachedProcess, TellsWhatFailed)
{
    const TestHome home;
    using Step = DetachedStart::Step;
    const auto failure = [](const DetachedProcess &process) {
        const DetachedStart start = startDetached(process);
        EXPECT_EQ(start.pid, 0);
        return std::pair(start.failed, start.error);
    };
    DetachedProcess process = probe(home.path(QStringLiteral("report")));
    process.workingDirectory = "/nonexistent";
    EXPECT_EQ(failure(process), std::pair(Step::WorkingDirectory, ENOENT));
    process = probe(home.path(QStringLiteral("report")));
    process.program = "/nonexistent";
    EXPECT_EQ(failure(process), std::pair(Step::Execute, ENOENT));
    process.program = QFile::encodeName(home.write(QStringLiteral("plain"), "text"));
    EXPECT_EQ(failure(process), std::pair(Step::Execute, EACCES));
    QFile::setPermissions(home.path(QStringLiteral("plain")), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(failure(process), std::pair(Step::Execute, ENOEXEC));
    EXPECT_FALSE(QFile::exists(home.path(QStringLiteral("report"))));
}

TEST(DetachedProcess, StartsFromManyThreads)
{
    const TestHome home;
    constexpr int count = 8;
    std::vector<DetachedStart> starts(count);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < count; ++i) {
            threads.emplace_back([&starts, &home, i] {
                starts[static_cast<std::size_t>(i)] = startDetached(probe(home.path(QString::number(i))));
            });
        }
    }
    for (int i = 0; i < count; ++i) {
        const auto report = awaitReport(home.path(QString::number(i)));
        ASSERT_TRUE(report);
        EXPECT_EQ(report->process, starts[static_cast<std::size_t>(i)].pid);
        EXPECT_EQ(report->descriptors.size(), 3);
    }
}

TEST(DetachedProcess, OutlivesItsLauncherKilled)
{
    const TestHome home;
    outlives(home, [](pid_t helper, int terminal) {
        EXPECT_EQ(kill(-helper, SIGKILL), 0);
        close(terminal);
    });
}

TEST(DetachedProcess, OutlivesTheTerminalOfItsLauncher)
{
    const TestHome home;
    outlives(home, [](pid_t, int terminal) { close(terminal); });
}
