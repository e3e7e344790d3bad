#include "platform/linux/launching/LaunchPlan.h"

#include "platform/linux/launching/TerminalCommand.h"
#include "support/TestHome.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

using namespace quillbay::platform;
using quillbay::testing::TestHome;
using ::testing::ElementsAre;

namespace {

const QString entryPath = QStringLiteral("/usr/share/applications/org.example.App.desktop");

class LaunchPlan : public ::testing::Test
{
protected:
    QString install(const QString &name) const
    {
        const QString file = home.write(QStringLiteral("bin/") + name, "#!/bin/sh\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ExeOwner);
        return file;
    }

    Environment environment() const
    {
        return {{"HOME", QFile::encodeName(home.path())},
                {"PATH", "/nonexistent:" + QFile::encodeName(home.path(QStringLiteral("bin")))}};
    }

    QStringList terminal(const Environment &variables) const
    {
        QStringList command = terminalCommand({QStringLiteral("edit"), QStringLiteral("a b")}, variables);
        if (!command.isEmpty())
            command[0] = QDir(home.path(QStringLiteral("bin"))).relativeFilePath(command.at(0));
        return command;
    }

    DetachedProcess process(const ApplicationDetails &details) const
    {
        const auto plan = planLaunch(entryPath, details, {}, environment());
        if (const auto *refused = std::get_if<LaunchResult>(&plan))
            ADD_FAILURE() << refused->reason.toStdString();
        return std::holds_alternative<DetachedProcess>(plan) ? std::get<DetachedProcess>(plan)
                                                             : DetachedProcess();
    }

    LaunchOutcome refusal(const ApplicationDetails &details) const
    {
        const auto plan = planLaunch(entryPath, details, {}, environment());
        const auto *refused = std::get_if<LaunchResult>(&plan);
        EXPECT_TRUE(refused && !refused->reason.isEmpty());
        return refused ? refused->outcome : LaunchOutcome::Started;
    }

    TestHome home;
};

ApplicationDetails entry(const char *exec)
{
    ApplicationDetails details;
    details.exec = QString::fromUtf8(exec);
    details.name = QStringLiteral("App");
    return details;
}

} // namespace

TEST(ChildEnvironment, KeepsTheSessionAndDropsWhatWasForUs)
{
    const char block[] =
        "PATH=/bin\0EMPTY=\0LINES=a=b\nc\0PATH=/second\0=odd\0nothing\0"
        "QT_QPA_PLATFORM=xcb\0QT_IM_MODULE=fcitx\0QT_SCALE_FACTOR=2\0QML2_IMPORT_PATH=/q\0"
        "QSG_RENDER_LOOP=basic\0LD_PRELOAD=x.so\0LD_LIBRARY_PATH=/l\0DESKTOP_STARTUP_ID=old\0"
        "XDG_ACTIVATION_TOKEN=old\0GIO_LAUNCHED_DESKTOP_FILE=/us\0"
        "GIO_LAUNCHED_DESKTOP_FILE_PID=7\0DBUS_STARTER_BUS_TYPE=session\0NOTIFY_SOCKET=/n\0"
        "WAYLAND_SOCKET=5\0WAYLAND_DISPLAY=wayland-0\0DBUS_SESSION_BUS_ADDRESS=unix:path=/b\0";
    const Environment ours = parseEnvironment(QByteArray(block, sizeof block - 1));
    EXPECT_EQ(ours.size(), 19);
    const Environment child = childEnvironment(ours);
    EXPECT_EQ(child, (Environment{{"PATH", "/bin"},
                                  {"EMPTY", ""},
                                  {"LINES", "a=b\nc"},
                                  {"QT_IM_MODULE", "fcitx"},
                                  {"QT_SCALE_FACTOR", "2"},
                                  {"WAYLAND_DISPLAY", "wayland-0"},
                                  {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/b"}}));
}

TEST(ChildEnvironment, IsThatOfTheStart)
{
    qputenv("QUILLBAY_TEST_SET_LATER", "1");
    const Environment atStart = startEnvironment();
    qunsetenv("QUILLBAY_TEST_SET_LATER");
    EXPECT_FALSE(atStart.isEmpty());
    EXPECT_FALSE(atStart.contains("QUILLBAY_TEST_SET_LATER"));
}

TEST_F(LaunchPlan, RunsACommandLine)
{
    const QString program = install(QStringLiteral("run"));
    ApplicationDetails details = entry("run --name=%c %i %u");
    details.icon = QStringLiteral("icon");
    const DetachedProcess plan = process(details);
    EXPECT_EQ(plan.program, QFile::encodeName(program));
    EXPECT_THAT(plan.arguments, ElementsAre("run", "--name=App", "--icon", "icon"));
    EXPECT_EQ(plan.workingDirectory, QFile::encodeName(home.path()));

    details = entry("./run");
    details.workingDirectory = home.path(QStringLiteral("bin"));
    EXPECT_EQ(process(details).program, QFile::encodeName(home.path(QStringLiteral("bin/run"))));
    EXPECT_EQ(process(details).workingDirectory, QFile::encodeName(details.workingDirectory));
}

TEST_F(LaunchPlan, RunsBundlesAndImages)
{
    ApplicationDetails details;
    details.executable = install(QStringLiteral("My App.AppImage"));
    const DetachedProcess plan = process(details);
    EXPECT_EQ(plan.program, QFile::encodeName(details.executable));
    EXPECT_THAT(plan.arguments, ElementsAre(QFile::encodeName(details.executable)));
    EXPECT_EQ(plan.pidVariable, QByteArray());

    QFile::setPermissions(details.executable, QFile::ReadOwner);
    EXPECT_EQ(refusal(details), LaunchOutcome::Failed);
    details.executable = home.path(QStringLiteral("bin"));
    EXPECT_EQ(refusal(details), LaunchOutcome::Failed);
    details.executable = home.path(QStringLiteral("gone.AppImage"));
    EXPECT_EQ(refusal(details), LaunchOutcome::NotFound);
}

TEST_F(LaunchPlan, TellsWhyNot)
{
    install(QStringLiteral("run"));
    EXPECT_EQ(refusal(entry("")), LaunchOutcome::Malformed);
    EXPECT_EQ(refusal(entry("run %q")), LaunchOutcome::Malformed);
    EXPECT_EQ(refusal(entry("absent")), LaunchOutcome::NotFound);
    EXPECT_EQ(refusal(entry("/absent/run")), LaunchOutcome::NotFound);
    ApplicationDetails inTerminal = entry("run");
    inTerminal.terminal = true;
    EXPECT_EQ(refusal(inTerminal), LaunchOutcome::Failed);
    install(QStringLiteral("xterm"));
    EXPECT_THAT(process(inTerminal).arguments,
                ElementsAre(QFile::encodeName(home.path(QStringLiteral("bin/xterm"))), "-e", "run"));
    inTerminal.exec = QStringLiteral("absent");
    EXPECT_EQ(refusal(inTerminal), LaunchOutcome::NotFound);
}

TEST_F(LaunchPlan, ChoosesTheTerminal)
{
    const auto command = [](const char *separatedByBars) {
        return QString::fromUtf8(separatedByBars).split(u'|');
    };
    Environment variables = environment();
    EXPECT_EQ(terminal(variables), QStringList());
    install(QStringLiteral("xterm"));
    EXPECT_EQ(terminal(variables), command("xterm|-e|edit|a b"));
    install(QStringLiteral("gnome-terminal"));
    EXPECT_EQ(terminal(variables), command("gnome-terminal|--|edit|a b"));
    install(QStringLiteral("my-term"));
    variables.insert("TERMINAL", "my-term");
    EXPECT_EQ(terminal(variables), command("my-term|-e|edit|a b"));
    variables.insert("TERMINAL", QFile::encodeName(install(QStringLiteral("kitty"))));
    EXPECT_EQ(terminal(variables), command("kitty|edit|a b"));
    install(QStringLiteral("x-terminal-emulator"));
    EXPECT_EQ(terminal(variables), command("x-terminal-emulator|-e|edit|a b"));
    install(QStringLiteral("xdg-terminal-exec"));
    EXPECT_EQ(terminal(variables), command("xdg-terminal-exec|edit|a b"));
}
