#include "platform/linux/hotkey/PortalGlobalHotkey.h"

#include "support/PrivateBus.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

using testing::TestProgram;

constexpr QKeyCombination key(Qt::ControlModifier | Qt::AltModifier, Qt::Key_N);
constexpr char ownKeyHint[] = "gapplication launch org.quillbay.Quillbay";

/// A bus of the test's own, on which nothing is started by itself; then the real portal in front of a backend
/// that the test steers.
class PortalGlobalHotkeyTest : public ::testing::Test
{
protected:
    PortalGlobalHotkeyTest()
        : m_environment(QProcessEnvironment::systemEnvironment())
    {
        for (const char *bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            m_environment.insert(QString::fromLatin1(bus), m_busServer.address());
        m_hotkey = std::make_unique<PortalGlobalHotkey>(m_bus);
        m_registered = std::make_unique<QSignalSpy>(m_hotkey.get(), &GlobalHotkey::registered);
        m_failed = std::make_unique<QSignalSpy>(m_hotkey.get(), &GlobalHotkey::failed);
        m_activated = std::make_unique<QSignalSpy>(m_hotkey.get(), &GlobalHotkey::activated);
    }

    void startPortal(const char *backendInterfaces, const QString &behaviour = {})
    {
        m_backend = std::make_unique<TestProgram>(QStringLiteral("/usr/bin/python3"),
                                                  QStringList{QStringLiteral(FAKE_BACKEND), behaviour},
                                                  m_environment);
        ASSERT_TRUE(m_backend->waitFor(QStringLiteral("ready")));
        const QString description = m_home.write(
            QStringLiteral("portals/test.portal"),
            QByteArray(
                "[portal]\nDBusName=org.freedesktop.impl.portal.desktop.test\nUseIn=test\nInterfaces=") +
                backendInterfaces + "\n");
        QProcessEnvironment environment = m_environment;
        // Without the schemas installed there it ends at once.
        environment.insert(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share"));
        environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("test"));
        environment.insert(QStringLiteral("XDG_DESKTOP_PORTAL_DIR"), m_home.path(QStringLiteral("portals")));
        m_portal = std::make_unique<TestProgram>(QStringLiteral("/usr/libexec/xdg-desktop-portal"),
                                                 QStringList(), environment);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return m_bus.interface()->isServiceRegistered(
                    QStringLiteral("org.freedesktop.portal.Desktop"));
            },
            20000));
    }
    void startPortalWithShortcuts(const QString &behaviour = {})
    {
        startPortal("org.freedesktop.impl.portal.GlobalShortcuts;", behaviour);
    }

    QDBusMessage tellBackend(const char *method, const QVariantList &arguments = {})
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.impl.portal.desktop.test"),
                                           QStringLiteral("/org/freedesktop/portal/desktop"),
                                           QStringLiteral("org.quillbay.Test"), QString::fromLatin1(method));
        message.setArguments(arguments);
        return m_bus.call(message);
    }

    bool registers()
    {
        m_hotkey->registerKey(key);
        EXPECT_EQ(m_registered->count() + m_failed->count(), 0) << "never before the call returns";
        return waitFor(*m_registered) && m_failed->isEmpty();
    }
    /// The reason of the one failure that comes.
    QString failure()
    {
        EXPECT_TRUE(waitFor(*m_failed));
        EXPECT_EQ(m_failed->count(), 1);
        return m_failed->value(0).value(0).toString();
    }
    static bool waitFor(QSignalSpy &spy)
    {
        return QTest::qWaitFor([&] { return !spy.isEmpty(); }, 20000);
    }

    const testing::TestHome m_home;
    QProcessEnvironment m_environment;
    testing::PrivateBus m_busServer;
    QDBusConnection m_bus = m_busServer.connect();
    std::unique_ptr<TestProgram> m_backend;
    std::unique_ptr<TestProgram> m_portal;
    std::unique_ptr<PortalGlobalHotkey> m_hotkey;
    std::unique_ptr<QSignalSpy> m_registered;
    std::unique_ptr<QSignalSpy> m_failed;
    std::unique_ptr<QSignalSpy> m_activated;
};

TEST_F(PortalGlobalHotkeyTest, BindsTheKeyHearsItAndClosesTheSession)
{
    ASSERT_NO_FATAL_FAILURE(startPortalWithShortcuts());
    ASSERT_TRUE(registers());
    EXPECT_EQ(m_registered->value(0),
              (QVariantList{QStringLiteral("desktop portal"), QStringLiteral("Press Ctrl+Alt+N")}));
    EXPECT_EQ(tellBackend("Triggers").arguments().value(0).toStringList(),
              QStringList{QStringLiteral("show=CTRL+ALT+n")});

    tellBackend("Activate", {QStringLiteral("something else"), QStringLiteral("token 1")});
    tellBackend("Activate", {QStringLiteral("show"), QStringLiteral("token 2")});
    ASSERT_TRUE(waitFor(*m_activated));
    EXPECT_EQ(*m_activated, QList<QVariantList>{{QStringLiteral("token 2")}});

    m_hotkey.reset();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return tellBackend("ClosedByClient").arguments().value(0).toInt() == 1; }, 20000));
}

TEST_F(PortalGlobalHotkeyTest, ARefusalByTheUserIsAFailure)
{
    ASSERT_NO_FATAL_FAILURE(startPortalWithShortcuts(QStringLiteral("refuse")));
    m_hotkey->registerKey(key);
    EXPECT_EQ(failure(), QStringLiteral("the user did not allow the key"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return tellBackend("ClosedByClient").arguments().value(0).toInt() == 1; }, 20000));
}

TEST_F(PortalGlobalHotkeyTest, ABindingWithoutAKeyIsAFailure)
{
    ASSERT_NO_FATAL_FAILURE(startPortalWithShortcuts(QStringLiteral("none")));
    m_hotkey->registerKey(key);
    EXPECT_EQ(failure(), QStringLiteral("the desktop bound no key"));
}

TEST_F(PortalGlobalHotkeyTest, ASessionThatTheDesktopClosesIsAFailure)
{
    ASSERT_NO_FATAL_FAILURE(startPortalWithShortcuts());
    ASSERT_TRUE(registers());
    tellBackend("CloseSession");
    EXPECT_EQ(failure(), QStringLiteral("the desktop has taken the key back"));
}

TEST_F(PortalGlobalHotkeyTest, APortalThatEndsIsAFailure)
{
    ASSERT_NO_FATAL_FAILURE(startPortalWithShortcuts());
    ASSERT_TRUE(registers());
    m_portal->kill();
    EXPECT_EQ(failure(), QStringLiteral("the desktop portal has ended"));
}

TEST_F(PortalGlobalHotkeyTest, ADesktopWithoutTheInterfaceIsAFailureThatTellsTheWayOut)
{
    ASSERT_NO_FATAL_FAILURE(startPortal("org.freedesktop.impl.portal.Screenshot;"));
    m_hotkey->registerKey(key);
    EXPECT_TRUE(failure().contains(QLatin1String(ownKeyHint))) << qPrintable(failure());
}

TEST_F(PortalGlobalHotkeyTest, SoIsOneWithoutAPortal)
{
    EXPECT_TRUE(m_hotkey->isAvailable());
    m_hotkey->registerKey(key);
    EXPECT_TRUE(failure().contains(QLatin1String(ownKeyHint))) << qPrintable(failure());
}

TEST_F(PortalGlobalHotkeyTest, ASessionWithoutABusIsAFailure)
{
    PortalGlobalHotkey hotkey{QDBusConnection(QString())};
    EXPECT_FALSE(hotkey.isAvailable());
    QSignalSpy failed(&hotkey, &GlobalHotkey::failed);
    hotkey.registerKey(key);
    EXPECT_TRUE(failed.isEmpty());
    EXPECT_TRUE(waitFor(failed));
}

} // namespace
} // namespace quillbay::platform
