#include "uninstaller/AdminPrivileges.h"

#include "elevate/CommandLine.h"
#include "support/FakeRemoval.h"
#include "support/HostileTree.h"
#include "uninstaller/CommandLines.h"

#include <QProcess>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

#include <gtest/gtest.h>

namespace quillbay {

using platform::ElevationResult;
using testing::FakeElevation;
using Outcome = ElevationResult::Outcome;

TEST(CommandLines, AreWhatAShellAndTheHelperReadThemAs)
{
    EXPECT_EQ(removeCommandLine("/home/jo/Bob's App"), "rm -rf '/home/jo/Bob'\\''s App'");
    EXPECT_EQ(moveCommandLine("/a'", "/'b"), "mv '/a'\\''' '/'\\''b'");
    EXPECT_EQ(removeCommandLine("/\"\\$(x)`y`\n"), "rm -rf '/\"\\$(x)`y`\n'");

    testing::HostileTree names(13, {});
    QByteArray script;
    QByteArray expected;
    for (int i = 0; i < 3000; ++i) {
        const QByteArray from = '/' + QByteArray::fromStdString(names.name());
        const QByteArray to = '/' + QByteArray::fromStdString(names.name());
        const auto removal = elevate::parseCommand(removeCommandLine(from).toStdString());
        ASSERT_TRUE(removal);
        ASSERT_EQ(removal->source, from.toStdString());
        const auto move = elevate::parseCommand(moveCommandLine(from, to).toStdString());
        ASSERT_TRUE(move);
        ASSERT_EQ(move->source, from.toStdString());
        ASSERT_EQ(move->destination, to.toStdString());
        script += moveCommandLine(from, to) + '\n';
        expected += from + '\0' + to + '\0';
    }
    QProcess shell;
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), QStringLiteral("mv() { printf '%s\\0' \"$@\"; }; eval "
                                                      "\"$(cat)\"")});
    shell.write(script);
    shell.closeWriteChannel();
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.readAllStandardOutput(), expected);
}

namespace {

class AdminPrivilegesTest : public ::testing::Test
{
protected:
    /// Asks from another thread; `answers` get what came back.
    std::unique_ptr<QThread> ask()
    {
        std::unique_ptr<QThread> thread(QThread::create([this] {
            answer = admin->deleteWithAdminPrivileges("/it's", {1, 2, 3}).outcome;
            ++answered;
        }));
        thread->start();
        return thread;
    }

    FakeElevation elevation;
    std::unique_ptr<AdminPrivileges> admin = std::make_unique<AdminPrivileges>(elevation);
    std::atomic<int> answered = 0;
    std::atomic<Outcome> answer = Outcome::Done;
};

} // namespace

TEST_F(AdminPrivilegesTest, TheCallerWaitsWhileTheMainThreadGoesOn)
{
    elevation.isHeld = true;
    const auto thread = ask();
    ASSERT_TRUE(QTest::qWaitFor([&] { return elevation.commands.size() == 1; }));
    EXPECT_EQ(elevation.commands[0].line, "rm -rf '/it'\\''s'");
    EXPECT_EQ(elevation.commands[0].file, (platform::FileStamp{1, 2, 3}));
    // The main thread was here all the time; the caller was not.
    EXPECT_EQ(answered, 0);
    elevation.answer({Outcome::Changed, {}});
    ASSERT_TRUE(thread->wait(20000));
    EXPECT_EQ(answer, Outcome::Changed);
}

TEST_F(AdminPrivilegesTest, EveryEndIsPrintedDifferently)
{
    QStringList printed;
    for (const Outcome outcome :
         {Outcome::Done, Outcome::Refused, Outcome::NoAgent, Outcome::NotPermitted, Outcome::Unavailable,
          Outcome::Changed, Outcome::CommandFailed, Outcome::Abandoned}) {
        elevation.perform = [&](const platform::ElevatedCommand &) { return ElevationResult{outcome, {}}; };
        ::testing::internal::CaptureStdout();
        const auto thread = ask();
        EXPECT_TRUE(QTest::qWaitFor([&] { return thread->isFinished(); }, 20000));
        const QString line = QString::fromStdString(::testing::internal::GetCapturedStdout());
        EXPECT_EQ(line.count(u'\n'), 1);
        EXPECT_FALSE(printed.contains(line)) << line.toStdString();
        EXPECT_FALSE(line.contains(QStringLiteral("/it"))) << "no path";
        EXPECT_EQ(answer, outcome);
        printed.append(line);
    }
}

TEST_F(AdminPrivilegesTest, NobodyWaitsForAProgramThatEnds)
{
    elevation.isHeld = true;
    const auto started = ask();
    ASSERT_TRUE(QTest::qWaitFor([&] { return elevation.commands.size() == 1; }));
    // This one is posted, and the event loop never comes to it.
    const auto posted = ask();
    admin->close();
    ASSERT_TRUE(started->wait(20000));
    ASSERT_TRUE(posted->wait(20000));
    EXPECT_EQ(answered, 2);
    EXPECT_EQ(answer, Outcome::Abandoned);
    const auto late = ask();
    ASSERT_TRUE(late->wait(20000));
    EXPECT_EQ(answered, 3);
    elevation.answer({Outcome::Done, {}});
    EXPECT_EQ(answer, Outcome::Abandoned) << "too late";
}

TEST_F(AdminPrivilegesTest, OnTheMainThreadItFailsInsteadOfWaitingForItself)
{
    EXPECT_EQ(admin->deleteWithAdminPrivileges("/a", {}).outcome, Outcome::Unavailable);
    QCoreApplication::processEvents();
    EXPECT_TRUE(elevation.commands.isEmpty());
}

} // namespace quillbay
