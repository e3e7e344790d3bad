#include "platform/linux/desktop/PortalAppearance.h"

#include "platform/desktop/PortalStandIn.h"
#include "support/PrivateBus.h"
#include "support/TestHome.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <memory>

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using quillbay::platform::Appearance;
using quillbay::platform::PortalAppearance;
using quillbay::testing::PortalStandIn;
using quillbay::testing::PrivateBus;
using quillbay::testing::TestHome;

namespace {

constexpr int patience = 10000; // milliseconds

const QString looks = QStringLiteral("org.freedesktop.appearance");
const QString interface = QStringLiteral("org.gnome.desktop.interface");
const QString scheme = QStringLiteral("color-scheme");
const QString iconTheme = QStringLiteral("icon-theme");

/// An appearance and what it announced.
struct Watched
{
    explicit Watched(const QDBusConnection &bus, std::chrono::milliseconds timeout = 5s)
        : appearance(bus, timeout)
    {
    }

    template <typename Condition>
    bool waitFor(Condition condition)
    {
        return QTest::qWaitFor(condition, patience);
    }
    bool waitForTheme(const char *name)
    {
        return waitFor([this, name] { return appearance.iconTheme() == QLatin1String(name); });
    }

    PortalAppearance appearance;
    QSignalSpy dark{&appearance, &Appearance::darkChanged};
    QSignalSpy motion{&appearance, &Appearance::reducedMotionChanged};
    QSignalSpy theme{&appearance, &Appearance::iconThemeChanged};
};

class PortalAppearanceTest : public ::testing::Test
{
protected:
    PortalAppearanceTest()
    {
        qunsetenv("GTK_THEME");
        m_portal.values = {{looks + QStringLiteral(" color-scheme"), 1U},
                           {interface + QStringLiteral(" enable-animations"), true},
                           {interface + QStringLiteral(" icon-theme"), QStringLiteral("Breeze")}};
    }

    TestHome m_home;
    PrivateBus m_bus;
    QDBusConnection m_portalBus = m_bus.connect();
    PortalStandIn m_portal{m_portalBus};
};

} // namespace

TEST_F(PortalAppearanceTest, TakesWhatThePortalSaysAndAnnouncesItOnce)
{
    Watched watched(m_bus.connect());
    EXPECT_FALSE(watched.appearance.isDark());
    ASSERT_TRUE(watched.waitForTheme("Breeze"));
    EXPECT_TRUE(watched.appearance.isDark());
    EXPECT_FALSE(watched.appearance.reducedMotion());
    EXPECT_EQ(watched.dark.count(), 1);
    EXPECT_EQ(watched.motion.count(), 0);
    EXPECT_EQ(watched.theme.count(), 1);
}

TEST_F(PortalAppearanceTest, FollowsRealChangesOnly)
{
    Watched watched(m_bus.connect());
    ASSERT_TRUE(watched.waitForTheme("Breeze"));
    m_portal.change(looks, scheme, 1U); // Not a change.
    m_portal.change(looks, scheme, 2U);
    m_portal.change(looks, scheme, 0U); // Light by default instead of by choice.
    m_portal.change(interface, QStringLiteral("enable-animations"), false);
    m_portal.change(looks, QStringLiteral("reduced-motion"), 1U); // Says the same again.
    m_portal.change(interface, iconTheme, QStringLiteral("Papirus"));
    ASSERT_TRUE(watched.waitForTheme("Papirus"));
    EXPECT_FALSE(watched.appearance.isDark());
    EXPECT_TRUE(watched.appearance.reducedMotion());
    EXPECT_EQ(watched.dark.count(), 2);
    EXPECT_EQ(watched.motion.count(), 1);
    EXPECT_EQ(watched.theme.count(), 2);
}

TEST_F(PortalAppearanceTest, NonsenseChangesNothing)
{
    Watched watched(m_bus.connect());
    ASSERT_TRUE(watched.waitForTheme("Breeze"));
    const auto wrapped = [](const QVariant &value) { return QVariant::fromValue(QDBusVariant(value)); };
    m_portal.sendChanged({});
    m_portal.sendChanged({looks, scheme});
    m_portal.sendChanged({looks, scheme, 2U});
    m_portal.sendChanged({looks, scheme, wrapped(QStringLiteral("light"))});
    m_portal.sendChanged({looks, scheme, wrapped(QStringList({scheme}))});
    m_portal.sendChanged({looks, scheme, wrapped(QVariantMap({{scheme, 2U}}))});
    m_portal.sendChanged({interface, iconTheme, wrapped(QStringLiteral("../../etc"))});
    m_portal.sendChanged({interface, iconTheme, wrapped(7)});
    m_portal.sendChanged({looks, QStringLiteral("reduced-motion"), wrapped(1U)}); // The one that counts.
    ASSERT_TRUE(watched.waitFor([&watched] { return watched.appearance.reducedMotion(); }));
    EXPECT_TRUE(watched.appearance.isDark());
    EXPECT_EQ(watched.dark.count(), 1);
    EXPECT_EQ(watched.theme.count(), 1);
}

TEST_F(PortalAppearanceTest, OthersCannotSpeakForThePortal)
{
    Watched watched(m_bus.connect());
    ASSERT_TRUE(watched.waitForTheme("Breeze"));
    QDBusConnection stranger = m_bus.connect();
    QDBusMessage forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                     QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    forged << interface << iconTheme << QVariant::fromValue(QDBusVariant(QStringLiteral("Forged")));
    ASSERT_TRUE(stranger.send(forged));
    // Once the bus has answered the stranger, it has passed the signal on, before the portal's own.
    ASSERT_TRUE(
        stranger.interface()->serviceOwner(QStringLiteral("org.freedesktop.portal.Desktop")).isValid());
    m_portal.change(looks, scheme, 2U);
    ASSERT_TRUE(watched.waitFor([&watched] { return !watched.appearance.isDark(); }));
    EXPECT_EQ(watched.appearance.iconTheme(), QStringLiteral("Breeze"));
}

TEST_F(PortalAppearanceTest, FilesStandInForWhatThePortalDoesNotKnow)
{
    m_home.write(QStringLiteral(".config/gtk-3.0/settings.ini"),
                 "[Settings]\ngtk-icon-theme-name=FromFile\ngtk-application-prefer-dark-theme=false\n");
    m_portal.values.remove(interface + QStringLiteral(" icon-theme"));
    m_portal.values.insert(interface + QStringLiteral(" enable-animations"), QStringLiteral("not a boolean"));
    Watched watched(m_bus.connect());
    ASSERT_TRUE(watched.waitForTheme("FromFile"));
    EXPECT_TRUE(watched.appearance.isDark());
    EXPECT_FALSE(watched.appearance.reducedMotion());
    m_portal.change(interface, iconTheme, QStringLiteral("Told"));
    EXPECT_TRUE(watched.waitForTheme("Told"));
}

TEST_F(PortalAppearanceTest, ASilentPortalIsNotWaitedForAndANewOneIsAsked)
{
    m_home.write(QStringLiteral(".config/kdeglobals"),
                 "[Icons]\nTheme=FromFile\n[Colors:Window]\nBackgroundNormal=20,20,20\n");
    m_portal.silent = true;
    Watched watched(m_bus.connect(), 50ms);
    ASSERT_TRUE(watched.waitForTheme("FromFile"));
    EXPECT_TRUE(watched.appearance.isDark());
    m_portal.leave();

    PortalStandIn next(m_bus.connect());
    next.values = {{looks + QStringLiteral(" color-scheme"), 2U},
                   {interface + QStringLiteral(" icon-theme"), QStringLiteral("Next")}};
    ASSERT_TRUE(watched.waitForTheme("Next"));
    EXPECT_FALSE(watched.appearance.isDark());
}

TEST(PortalAppearanceAlone, FilesStandInWithoutAPortalOrABus)
{
    TestHome home;
    qunsetenv("GTK_THEME");
    home.write(QStringLiteral(".config/gtk-4.0/settings.ini"),
               "[Settings]\ngtk-application-prefer-dark-theme=1\ngtk-icon-theme-name=FromFile\n");
    PrivateBus bus;
    for (const QDBusConnection &connection : {bus.connect(), QDBusConnection(QStringLiteral("no bus"))}) {
        Watched watched(connection);
        ASSERT_TRUE(watched.waitForTheme("FromFile"));
        EXPECT_TRUE(watched.appearance.isDark());
        EXPECT_EQ(watched.dark.count(), 1);
    }
}

TEST(PortalAppearanceAlone, MayGoWhileAnswersAreOnTheirWay)
{
    TestHome home;
    PrivateBus bus;
    PortalStandIn portal(bus.connect());
    auto gone = std::make_unique<PortalAppearance>(bus.connect());
    auto reading = std::make_unique<PortalAppearance>(QDBusConnection(QStringLiteral("no bus")));
    gone.reset();
    reading.reset();
    ASSERT_TRUE(QTest::qWaitFor([&portal] { return portal.reads == 4; }, patience));
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}
