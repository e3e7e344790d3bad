#include "platform/Platform.h"
#include "support/PrivateBus.h"
#include "support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTest>

#include <gtest/gtest.h>

using namespace quillbay;
using quillbay::testing::PrivateBus;
using quillbay::testing::TestProgram;

namespace {

constexpr int patience = 10000; // milliseconds

/// A process of the program.
class Instance : public TestProgram
{
public:
    explicit Instance(const QString &bus, const QStringList &arguments = {},
                      const QStringList &environment = {})
        : TestProgram(QStringLiteral(INSTANCE_PROGRAM), arguments, variables(bus, environment))
    {
    }

private:
    static QProcessEnvironment variables(const QString &bus, const QStringList &environment)
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
        result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        for (const QString &entry : environment)
            result.insert(entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
        return result;
    }
};

QDBusMessage applicationCall(const char *method)
{
    return QDBusMessage::createMethodCall(
        QLatin1String(platform::applicationId), QStringLiteral("/org/quillbay/Quillbay"),
        QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
}

} // namespace

TEST(SingleInstance, ASecondStartHandsItsUrlsAndTokenOver)
{
    PrivateBus bus;
    Instance first(bus.address(), {},
                   {QStringLiteral("XDG_ACTIVATION_TOKEN=own"), QStringLiteral("DESKTOP_STARTUP_ID=own")});
    ASSERT_EQ(first.nextLine(), QStringLiteral("primary"));
    first.send("gui");
    ASSERT_EQ(first.nextLine(), QStringLiteral("gui"));
    first.send("start");
    EXPECT_EQ(first.nextLine(), QStringLiteral("done start environment clean"));

    Instance second(bus.address(), {}, {QStringLiteral("XDG_ACTIVATION_TOKEN=token-2")});
    EXPECT_EQ(second.take(2),
              QStringList({QStringLiteral("forwarded"), QStringLiteral("environment clean")}));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(first.nextLine(), QStringLiteral("activated token-2"));

    Instance third(bus.address(), {QStringLiteral("quillbay://a"), QStringLiteral("quillbay://b")},
                   {QStringLiteral("DESKTOP_STARTUP_ID=x_TIME7")});
    EXPECT_EQ(third.nextLine(), QStringLiteral("forwarded"));
    EXPECT_EQ(first.take(2), QStringList({QStringLiteral("opened quillbay://a quillbay://b"),
                                          QStringLiteral("activated x_TIME7")}));
}

TEST(SingleInstance, CallsBeforeTheApplicationObjectArriveAfterIt)
{
    PrivateBus bus;
    Instance first(bus.address());
    ASSERT_EQ(first.nextLine(), QStringLiteral("primary"));
    QDBusConnection caller = bus.connect();
    const QDBusPendingCall early = caller.asyncCall(applicationCall("Activate") << QVariantMap());
    QDBusMessage ping = applicationCall("Ping");
    ping = QDBusMessage::createMethodCall(
        ping.service(), ping.path(), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    // Answered by the library's own thread, so the call before it has arrived by then.
    ASSERT_EQ(caller.call(ping, QDBus::Block, patience).type(), QDBusMessage::ReplyMessage);
    EXPECT_FALSE(early.isFinished());

    first.send("gui");
    ASSERT_EQ(first.nextLine(), QStringLiteral("gui"));
    ASSERT_TRUE(QTest::qWaitFor([&early] { return early.isFinished(); }, patience));
    EXPECT_FALSE(early.isError()) << qPrintable(early.error().message());
    first.send("start");
    EXPECT_EQ(first.take(2),
              QStringList({QStringLiteral("activated "), QStringLiteral("done start environment clean")}));
}

TEST(SingleInstance, TheNextStartTakesOverFromAKilledOne)
{
    PrivateBus bus;
    Instance first(bus.address());
    ASSERT_EQ(first.nextLine(), QStringLiteral("primary"));
    first.kill();
    Instance second(bus.address());
    EXPECT_EQ(second.nextLine(), QStringLiteral("primary"));
}

TEST(SingleInstance, TheCallThatStartsTheProgramIsAnswered)
{
    PrivateBus bus;
    const QString name = QLatin1String(platform::applicationId);
    bus.addService(name, QStringLiteral(INSTANCE_PROGRAM " --gapplication-service"));
    QDBusConnection caller = bus.connect();
    for (int round = 0; round < 5; ++round) {
        const QDBusMessage reply =
            caller.call(applicationCall("Activate") << QVariantMap(), QDBus::Block, patience);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
        const QDBusMessage quit = caller.call(
            applicationCall("ActivateAction") << QStringLiteral("quit") << QVariantList() << QVariantMap(),
            QDBus::Block, patience);
        ASSERT_EQ(quit.type(), QDBusMessage::ReplyMessage) << qPrintable(quit.errorMessage());
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return !caller.interface()->isServiceRegistered(name); }, patience));
    }
}

TEST(SingleInstance, WithoutABusALockDecides)
{
    const QString none = QStringLiteral("unix:path=/nonexistent/bus");
    Instance first(none);
    ASSERT_EQ(first.nextLine(), QStringLiteral("primary"));
    Instance second(none);
    EXPECT_EQ(second.nextLine(), QStringLiteral("refused"));
    EXPECT_EQ(second.exitCode(), 1);
    first.kill();
    Instance third(QString{});
    EXPECT_EQ(third.nextLine(), QStringLiteral("primary"));
}
