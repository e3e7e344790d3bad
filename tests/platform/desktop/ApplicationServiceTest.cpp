#include "platform/Platform.h"
#include "platform/linux/desktop/DBusApplicationService.h"
#include "support/PrivateBus.h"
#include "support/TestHome.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QTest>

#include <gmock/gmock.h>

using namespace quillbay;
using namespace std::chrono_literals;
using platform::ApplicationService;
using platform::DBusApplicationService;
using quillbay::testing::PrivateBus;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int patience = 10000; // milliseconds

/// A service that has claimed, what it delivered as lines, and a peer that calls it.
class ApplicationServiceTest : public ::testing::Test
{
protected:
    ApplicationServiceTest()
    {
        QObject::connect(
            &m_service, &ApplicationService::activated, &m_service,
            [this](const QString &token) { m_delivered << QStringLiteral("activated ") + token; });
        QObject::connect(&m_service, &ApplicationService::opened, &m_service,
                         [this](const QStringList &urls) {
                             m_delivered << QStringLiteral("opened ") + urls.join(QLatin1Char(' '));
                         });
        QObject::connect(&m_service, &ApplicationService::actionRequested, &m_service,
                         [this](const QString &action, const QVariantList &parameters) {
                             m_delivered << QStringLiteral("action ") + action;
                             m_parameters = parameters;
                         });
    }

    /// Calls the service and gives the answer, or the error's name.
    QString call(const char *method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QLatin1String(platform::applicationId), QStringLiteral("/org/quillbay/Quillbay"),
            QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_caller.asyncCall(message, patience);
        if (!QTest::qWaitFor([&pending] { return pending.isFinished(); }, patience))
            return QStringLiteral("no answer");
        return pending.isError() ? QDBusError::errorString(pending.error().type()) : QStringLiteral("ok");
    }
    bool waitForDeliveries(int count)
    {
        return QTest::qWaitFor([this, count] { return m_delivered.size() >= count; }, patience);
    }
    static QVariantMap token(const char *key, const QVariant &value) { return {{QLatin1String(key), value}}; }

    PrivateBus m_bus;
    DBusApplicationService m_service{m_bus.connect()};
    QDBusConnection m_caller = m_bus.connect();
    QStringList m_delivered;
    QVariantList m_parameters;
};

const QString limits = QDBusError::errorString(QDBusError::LimitsExceeded);

} // namespace

TEST_F(ApplicationServiceTest, EarlyCallsAreAnsweredAndWaitInOrder)
{
    ASSERT_EQ(m_service.claim({QStringLiteral("quillbay://own")}), ApplicationService::Claim::Primary);
    EXPECT_EQ(call("Activate", {token("activation-token", QStringLiteral("one"))}), QStringLiteral("ok"));
    EXPECT_EQ(call("ActivateAction", {QStringLiteral("quit"), QVariantList(), QVariantMap()}),
              QStringLiteral("ok"));
    EXPECT_THAT(m_delivered, IsEmpty());
    m_service.start();
    EXPECT_THAT(m_delivered,
                ElementsAre(QStringLiteral("opened quillbay://own"), QStringLiteral("activated "),
                            QStringLiteral("activated one"), QStringLiteral("action quit")));
}

TEST_F(ApplicationServiceTest, TheTokenComesFromEitherKeyAndNeverFromNonsense)
{
    ASSERT_EQ(m_service.claim({}), ApplicationService::Claim::Primary);
    m_service.start();
    QVariantMap both = token("desktop-startup-id", QStringLiteral("id_TIME1"));
    both.insert(QStringLiteral("activation-token"), QStringLiteral("token"));
    const QVariant nested = QVariant::fromValue(QDBusVariant(QStringLiteral("deep")));
    const QList<std::pair<QVariantMap, QString>> cases = {
        {both, QStringLiteral("activated token")},
        {token("desktop-startup-id", QStringLiteral("id_TIME1")), QStringLiteral("activated id_TIME1")},
        {token("activation-token", nested), QStringLiteral("activated deep")},
        {token("activation-token", 7), QStringLiteral("activated ")},
        {token("activation-token", QString(5000, QLatin1Char('t'))), QStringLiteral("activated ")},
    };
    for (const auto &[data, expected] : cases) {
        m_delivered.clear();
        EXPECT_EQ(call("Activate", {data}), QStringLiteral("ok"));
        ASSERT_TRUE(waitForDeliveries(1));
        EXPECT_EQ(m_delivered.constFirst(), expected);
    }
}

TEST_F(ApplicationServiceTest, ParametersArePlainValues)
{
    ASSERT_EQ(m_service.claim({}), ApplicationService::Claim::Primary);
    m_service.start();
    const QVariantList sent = {QStringLiteral("text"), QVariant::fromValue(QDBusVariant(QVariant(3))),
                               QVariantMap{{QStringLiteral("key"), 1}}};
    EXPECT_EQ(call("ActivateAction", {QStringLiteral("show"), sent, QVariantMap()}), QStringLiteral("ok"));
    ASSERT_TRUE(waitForDeliveries(1));
    EXPECT_THAT(m_delivered, ElementsAre(QStringLiteral("action show")));
    EXPECT_THAT(m_parameters, ElementsAre(QVariant(QStringLiteral("text")), QVariant(3), QVariant()));
}

TEST_F(ApplicationServiceTest, HostileCallsAreRefusedAndHarmNothing)
{
    ASSERT_EQ(m_service.claim({}), ApplicationService::Claim::Primary);
    m_service.start();
    const QStringList many(10000, QStringLiteral("quillbay://x"));
    const QString endless(1000000, QLatin1Char('x'));
    EXPECT_EQ(call("Open", {many, QVariantMap()}), limits);
    EXPECT_EQ(call("Open", {QStringList(endless), QVariantMap()}), limits);
    EXPECT_EQ(call("ActivateAction", {endless, QVariantList(), QVariantMap()}), limits);
    EXPECT_EQ(call("ActivateAction", {QStringLiteral("a"), QVariantList(1000, 1), QVariantMap()}), limits);
    const QString unknown = QDBusError::errorString(QDBusError::UnknownMethod);
    EXPECT_EQ(call("Open", {QStringLiteral("quillbay://x"), QVariantMap()}), unknown);
    EXPECT_EQ(call("Activate", {}), unknown);
    EXPECT_EQ(call("Activate", {1, QByteArray("bytes")}), unknown);
    EXPECT_EQ(call("deleteLater", {}), unknown);

    EXPECT_EQ(call("Open", {QStringList(QStringLiteral("quillbay://fine")), QVariantMap()}),
              QStringLiteral("ok"));
    ASSERT_TRUE(waitForDeliveries(2));
    EXPECT_THAT(m_delivered,
                ElementsAre(QStringLiteral("opened quillbay://fine"), QStringLiteral("activated ")));
}

TEST_F(ApplicationServiceTest, OnlySoManyCallsWait)
{
    ASSERT_EQ(m_service.claim({}), ApplicationService::Claim::Primary);
    for (std::size_t i = 0; i < DBusApplicationService::maximumWaiting; ++i)
        ASSERT_EQ(call("Activate", {QVariantMap()}), QStringLiteral("ok")) << i;
    EXPECT_EQ(call("Activate", {QVariantMap()}), limits);
    m_service.start();
    EXPECT_EQ(m_delivered.size(), 100);
    EXPECT_EQ(call("Activate", {QVariantMap()}), QStringLiteral("ok"));
    EXPECT_TRUE(waitForDeliveries(101));
}

TEST_F(ApplicationServiceTest, AnOwnerThatDoesNotAnswerIsNotWaitedForLong)
{
    ASSERT_EQ(m_service.claim({}), ApplicationService::Claim::Primary);
    qputenv("XDG_ACTIVATION_TOKEN", "left over");
    // The owner lives on this thread, which waits: it cannot answer.
    DBusApplicationService second(m_bus.connect(), 50ms);
    EXPECT_EQ(second.claim({}), ApplicationService::Claim::Refused);
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST(ApplicationServiceName, AnOwnerThatIsNotTheProgramRefuses)
{
    PrivateBus bus;
    QDBusConnection stranger = bus.connect();
    ASSERT_TRUE(stranger.registerService(QLatin1String(platform::applicationId)));
    DBusApplicationService service(bus.connect());
    EXPECT_EQ(service.claim({QStringLiteral("quillbay://x")}), ApplicationService::Claim::Refused);
}

TEST(ApplicationServiceEnvironment, StaysForTheWindowSystemUntilStart)
{
    const quillbay::testing::TestHome home;
    DBusApplicationService service(QDBusConnection(QStringLiteral("no bus")));
    qputenv("XDG_ACTIVATION_TOKEN", "own");
    qputenv("DESKTOP_STARTUP_ID", "own");
    ASSERT_EQ(service.claim({}), ApplicationService::Claim::Primary);
    EXPECT_EQ(qgetenv("DESKTOP_STARTUP_ID"), "own");
    service.start();
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID"));
}
