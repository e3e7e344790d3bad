#include "platform/linux/launching/LinuxApplicationLauncher.h"

#include "BusPeer.h"
#include "ProbeReport.h"
#include "platform/linux/launching/ApplicationScope.h"
#include "platform/linux/launching/DBusActivation.h"
#include "platform/linux/launching/X11StartupIds.h"
#include "support/FakeApplications.h"
#include "support/PrivateBus.h"
#include "support/TestHome.h"

#include <QDBusArgument>
#include <QFile>
#include <QTest>
#include <QThread>

#include <gmock/gmock.h>
#include <unistd.h>

using namespace quillbay::platform;
using namespace quillbay::testing;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

namespace {

const QString entryPath = QStringLiteral("/apps/org.example.App-1.desktop");

class FixedToken final : public ActivationTokens
{
public:
    explicit FixedToken(std::vector<ActivationTokenRequest> &requests)
        : m_requests(requests)
    {
    }
    bool isAvailable() const override { return true; }
    void request(const ActivationTokenRequest &request, Answer answer) override
    {
        m_requests.push_back(request);
        answer({QStringLiteral("startup id"), QStringLiteral("token")});
    }

private:
    std::vector<ActivationTokenRequest> &m_requests;
};

class Launcher : public ::testing::Test
{
protected:
    Launcher()
    {
        details.identifier = QStringLiteral("org.example.App-1");
        details.name = QStringLiteral("App");
        details.exec = QStringLiteral("probe \"%1\" %i %c").arg(report);
        const QString link = home.path(QStringLiteral("bin/probe"));
        QDir().mkpath(home.path(QStringLiteral("bin")));
        QFile::link(probeProgram(), link);
    }

    LinuxApplicationLauncher::Surroundings
    surroundings(const QDBusConnection &bus = QDBusConnection(QString()))
    {
        const QByteArray path = QFile::encodeName(home.path(QStringLiteral("bin")));
        LinuxApplicationLauncher::Surroundings result{{{"PATH", path},
                                                       {"HOME", QFile::encodeName(home.path())},
                                                       {"QT_QPA_PLATFORM", "xcb"},
                                                       {"MINE", "1"}},
                                                      bus,
                                                      {}};
        result.tokens.push_back(std::make_unique<FixedToken>(requests));
        return result;
    }

    // The result, once it is there; checks what holds for every launch.
    LaunchResult launch(LinuxApplicationLauncher &launcher)
    {
        if (!details.exec.isNull() || !details.executable.isNull())
            source.setDetails(entryPath, details);
        std::vector<LaunchResult> results;
        launcher.launch({entryPath, nullptr, 4711}, [&](const LaunchResult &result) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            results.push_back(result);
        });
        EXPECT_TRUE(results.empty()) << "answered before the call returned";
        if (!QTest::qWaitFor([&] { return !results.empty(); }, 10'000))
            return {LaunchOutcome::Failed, QStringLiteral("no answer")};
        QCoreApplication::processEvents();
        EXPECT_EQ(results.size(), 1U);
        return results.front();
    }

    LaunchOutcome outcome(const QDBusConnection &bus = QDBusConnection(QString()))
    {
        LinuxApplicationLauncher launcher(source, surroundings(bus));
        const LaunchResult result = launch(launcher);
        EXPECT_EQ(result.reason.isEmpty(), result.outcome == LaunchOutcome::Started)
            << result.reason.toStdString();
        return result.outcome;
    }

    TestHome home;
    const QString report = home.path(QStringLiteral("a report"));
    FakeApplicationSource source;
    ApplicationDetails details;
    std::vector<ActivationTokenRequest> requests;
};

class LauncherOnBus : public Launcher
{
protected:
    PrivateBus bus;
    QDBusConnection connection = bus.connect();
};

} // namespace

TEST_F(Launcher, RunsAnEntry)
{
    details.startupNotify = true;
    EXPECT_EQ(outcome(), LaunchOutcome::Started);
    const auto started = awaitReport(report);
    ASSERT_TRUE(started);
    EXPECT_THAT(started->arguments, ElementsAre(QFile::encodeName(report), "App"));
    EXPECT_EQ(started->directory, QFile::encodeName(home.path()));
    QMap<QByteArray, QByteArray> expected{
        {"PATH", QFile::encodeName(home.path(QStringLiteral("bin")))},
        {"HOME", QFile::encodeName(home.path())},
        {"PWD", QFile::encodeName(home.path())},
        {"MINE", "1"},
        {"DESKTOP_STARTUP_ID", "startup id"},
        {"XDG_ACTIVATION_TOKEN", "token"},
        {"GIO_LAUNCHED_DESKTOP_FILE", QFile::encodeName(entryPath)},
        {"GIO_LAUNCHED_DESKTOP_FILE_PID", QByteArray::number(started->process)},
    };
    EXPECT_EQ(started->environment, expected);
    EXPECT_EQ(started->descriptors.size(), 3);
    EXPECT_EQ(started->session, started->process);
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].timestamp, 4711U);
    EXPECT_EQ(requests[0].identifier, details.identifier);
    EXPECT_TRUE(requests[0].startupNotify);
}

TEST_F(Launcher, RunsATerminalEntry)
{
    home.write(QStringLiteral("bin/xdg-terminal-exec"), "#!/bin/sh\nTERMINAL_RAN=yes exec \"$@\"\n");
    QFile::setPermissions(home.path(QStringLiteral("bin/xdg-terminal-exec")),
                          QFile::ReadOwner | QFile::ExeOwner);
    details.terminal = true;
    EXPECT_EQ(outcome(), LaunchOutcome::Started);
    const auto started = awaitReport(report);
    ASSERT_TRUE(started);
    EXPECT_EQ(started->environment.value("TERMINAL_RAN"), "yes");
    EXPECT_THAT(started->arguments, ElementsAre(QFile::encodeName(report), "App"));
}

TEST_F(Launcher, TellsWhatFailed)
{
    details.exec = QStringLiteral("absent-program");
    EXPECT_EQ(outcome(), LaunchOutcome::NotFound);
    details.exec = QStringLiteral("probe \"open");
    EXPECT_EQ(outcome(), LaunchOutcome::Malformed);
    details.exec = QStringLiteral("probe x");
    details.workingDirectory = QStringLiteral("/nonexistent");
    EXPECT_EQ(outcome(), LaunchOutcome::Failed);
    FakeApplicationSource none;
    LinuxApplicationLauncher launcher(none, surroundings());
    details = {};
    EXPECT_EQ(launch(launcher).outcome, LaunchOutcome::NotFound);
}

TEST_F(Launcher, NeedsNoOneToListenAndMayGoEarly)
{
    source.setDetails(entryPath, details);
    {
        LinuxApplicationLauncher launcher(source, surroundings());
        launcher.launch({entryPath}, {});
        EXPECT_TRUE(awaitFile(report));
    }
    LinuxApplicationLauncher launcher(source, surroundings());
    launcher.launch({entryPath}, [](const LaunchResult &) { ADD_FAILURE() << "the launcher is gone"; });
}

TEST_F(LauncherOnBus, ActivatesByBusName)
{
    BusPeer app(bus.connect(), details.identifier, QStringLiteral("/org/example/App_1"));
    details.dbusActivatable = true;
    EXPECT_EQ(outcome(connection), LaunchOutcome::Started);
    ASSERT_EQ(app.calls.size(), 1U);
    const QDBusMessage &call = app.calls.front();
    EXPECT_EQ(call.interface() + u'.' + call.member(),
              QStringLiteral("org.freedesktop.Application.Activate"));
    EXPECT_EQ(call.path(), QStringLiteral("/org/example/App_1"));
    EXPECT_EQ(call.signature(), QStringLiteral("a{sv}"));
    EXPECT_EQ(qdbus_cast<QVariantMap>(call.arguments().value(0)),
              (QVariantMap{{QStringLiteral("desktop-startup-id"), QStringLiteral("startup id")},
                           {QStringLiteral("activation-token"), QStringLiteral("token")}}));
    EXPECT_FALSE(QFile::exists(report));
}

TEST_F(LauncherOnBus, FallsBackToTheCommandLine)
{
    details.dbusActivatable = true;
    EXPECT_EQ(outcome(connection), LaunchOutcome::Started) << "nobody owns the name";
    EXPECT_TRUE(awaitReport(report));
    QFile::remove(report);

    BusPeer app(bus.connect(), details.identifier, QStringLiteral("/"));
    app.error = QStringLiteral("org.freedesktop.DBus.Error.NoReply");
    EXPECT_EQ(outcome(connection), LaunchOutcome::Failed);
    EXPECT_FALSE(QFile::exists(report)) << "it may be starting: a second start is wrong";
    app.error = QStringLiteral("org.example.Error.Broken");
    EXPECT_EQ(outcome(connection), LaunchOutcome::Started);
    EXPECT_TRUE(awaitReport(report));
    EXPECT_EQ(app.calls.size(), 2U);
    QFile::remove(report);

    details.exec = QLatin1String("");
    EXPECT_EQ(outcome(connection), LaunchOutcome::Failed);
}

TEST_F(LauncherOnBus, PutsTheProcessIntoAScope)
{
    BusPeer manager(bus.connect(), QStringLiteral("org.freedesktop.systemd1"),
                    QStringLiteral("/org/freedesktop/systemd1"));
    EXPECT_EQ(outcome(connection), LaunchOutcome::Started);
    const auto started = awaitReport(report);
    ASSERT_TRUE(started);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !manager.calls.empty(); }, 10'000));
    const QDBusMessage &call = manager.calls.front();
    EXPECT_EQ(call.interface() + u'.' + call.member(),
              QStringLiteral("org.freedesktop.systemd1.Manager.StartTransientUnit"));
    EXPECT_EQ(call.signature(), QStringLiteral("ssa(sv)a(sa(sv))"));
    ASSERT_EQ(call.arguments().size(), 4);
    EXPECT_EQ(call.arguments()[0].toString(),
              QStringLiteral("app-quillbay-org.example.App\\x2d1-%1.scope").arg(started->process));
    EXPECT_EQ(call.arguments()[1].toString(), QStringLiteral("fail"));
    QMap<QString, QVariant> properties;
    const auto list = call.arguments()[2].value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString name;
        QDBusVariant value;
        list.beginStructure();
        list >> name >> value;
        list.endStructure();
        properties.insert(name, value.variant());
    }
    list.endArray();
    EXPECT_EQ(qdbus_cast<QList<uint>>(properties.take(QStringLiteral("PIDs"))),
              QList<uint>{static_cast<uint>(started->process)});
    EXPECT_EQ(properties,
              (QMap<QString, QVariant>{{QStringLiteral("CollectMode"), QStringLiteral("inactive-or-failed")},
                                       {QStringLiteral("Slice"), QStringLiteral("app.slice")}}));
}

TEST(LaunchNames, AreWhatTheDesktopExpects)
{
    EXPECT_TRUE(isActivatableName(QStringLiteral("org.example.App-1")));
    for (const char *name :
         {"", "app", "org.", ".org", "org..App", "org.1app", "org.ap p", "org.äpp", "org/x.y"})
        EXPECT_FALSE(isActivatableName(QString::fromUtf8(name))) << name;
    EXPECT_FALSE(isActivatableName(QStringLiteral("a.") + QString(254, u'b')));
    EXPECT_EQ(activationObjectPath(QStringLiteral("org.a-b.C_d")), QStringLiteral("/org/a_b/C_d"));

    EXPECT_EQ(scopeName(QStringLiteral(".hid/den ä:_."), 12),
              QStringLiteral("app-quillbay-\\x2ehid\\x2fden\\x20\\xc3\\xa4:_.-12.scope"));
    const QString longest = scopeName(QString(400, u'-'), 4194304);
    EXPECT_LE(longest.size(), 255);
    EXPECT_TRUE(longest.endsWith(QStringLiteral("\\x2d-4194304.scope")));

    EXPECT_EQ(startupId(7, QStringLiteral("host"), 3, 4294967295U),
              QStringLiteral("quillbay-7-host-3_TIME4294967295"));
}

TEST(X11StartupIds, AreGivenToThoseWhoAsk)
{
    X11StartupIds ids;
    std::vector<QString> given;
    const auto keep = [&given](const ActivationToken &token) {
        EXPECT_TRUE(token.activationToken.isEmpty());
        given.push_back(token.startupId);
    };
    ids.request({nullptr, 1, {}, false}, keep);
    ids.request({nullptr, 2, {}, true}, keep);
    ids.request({nullptr, 3, {}, true}, keep);
    ASSERT_EQ(given.size(), 3U);
    EXPECT_EQ(given[0], QString());
    EXPECT_TRUE(given[1].endsWith(QStringLiteral("-1_TIME2"))) << given[1].toStdString();
    EXPECT_TRUE(given[2].endsWith(QStringLiteral("-2_TIME3"))) << given[2].toStdString();
}
