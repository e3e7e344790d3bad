#include "platform/linux/colors/PortalColorSampler.h"

#include "platform/linux/colors/FirstColorSampler.h"
#include "platform/linux/colors/KWinColorSampler.h"
#include "platform/none/NoColorSampler.h"
#include "support/FakeColorSampler.h"
#include "support/PrivateBus.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QTest>

#include <optional>

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

using Outcome = ColorSample::Outcome;
using testing::TestProgram;

/// A bus of the test's own, on which nothing is started by itself.
class DesktopColorTest : public ::testing::Test
{
protected:
    DesktopColorTest()
        : m_environment(QProcessEnvironment::systemEnvironment())
    {
        for (const char *bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            m_environment.insert(QString::fromLatin1(bus), m_busServer.address());
    }

    void startDesktop(const char *kind, const char *answer)
    {
        m_desktop = std::make_unique<TestProgram>(
            QStringLiteral("/usr/bin/python3"),
            QStringList{QStringLiteral(FAKE_DESKTOP), QString::fromLatin1(kind), QString::fromLatin1(answer)},
            m_environment);
        ASSERT_TRUE(m_desktop->waitFor(QStringLiteral("ready")));
    }
    /// The real portal, in front of a backend that gives `answer`; "" for one that picks no colours.
    void startPortal(const char *answer)
    {
        ASSERT_NO_FATAL_FAILURE(startDesktop("portal", answer));
        // Of a backend that cannot ask for access the portal offers no screenshots, and no picking.
        const QByteArray interface = *answer ? "Screenshot;org.freedesktop.impl.portal.Access" : "Wallpaper";
        m_home.write(QStringLiteral("portals/test.portal"),
                     "[portal]\nDBusName=org.freedesktop.impl.portal.desktop.test\nUseIn=test\n"
                     "Interfaces=org.freedesktop.impl.portal." +
                         interface + ";\n");
        QProcessEnvironment environment = m_environment;
        // Without the schemas installed there it ends at once.
        environment.insert(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share"));
        environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("test"));
        environment.insert(QStringLiteral("XDG_DESKTOP_PORTAL_DIR"), m_home.path(QStringLiteral("portals")));
        m_portal = std::make_unique<TestProgram>(QStringLiteral("/usr/libexec/xdg-desktop-portal"),
                                                 QStringList(), environment);
        const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
        ASSERT_TRUE(waitFor([&] { return m_bus.interface()->isServiceRegistered(name).value(); }));
    }

    ColorSample sampleWith(ColorSampler &sampler)
    {
        std::optional<ColorSample> answer;
        sampler.sample([&](const ColorSample &sample) { answer = sample; });
        EXPECT_FALSE(answer) << "never before the call returns";
        EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
        return answer.value_or(ColorSample{});
    }
    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 20000); }

    const testing::TestHome m_home;
    QProcessEnvironment m_environment;
    testing::PrivateBus m_busServer;
    QDBusConnection m_bus = m_busServer.connect();
    std::unique_ptr<TestProgram> m_desktop;
    std::unique_ptr<TestProgram> m_portal;
    PortalColorSampler m_sampler{m_bus};
};

TEST_F(DesktopColorTest, ThePortalGivesItsColourMoreThanOnce)
{
    ASSERT_NO_FATAL_FAILURE(startPortal("pick"));
    for (int round = 0; round < 2; ++round) {
        const ColorSample sample = sampleWith(m_sampler);
        ASSERT_EQ(sample.outcome, Outcome::Picked) << qPrintable(sample.reason);
        EXPECT_EQ(sample.red, 1.0);
        EXPECT_EQ(sample.green, 0.5);
        EXPECT_EQ(sample.blue, 0.999);
    }
}

TEST_F(DesktopColorTest, ThePersonCancelsAtThePortal)
{
    ASSERT_NO_FATAL_FAILURE(startPortal("cancel"));
    EXPECT_EQ(sampleWith(m_sampler).outcome, Outcome::Cancelled);
}

TEST_F(DesktopColorTest, APortalThatEndsMeanwhileCancels)
{
    ASSERT_NO_FATAL_FAILURE(startPortal("wait"));
    std::optional<ColorSample> answer;
    m_sampler.sample([&](const ColorSample &sample) { answer = sample; });
    ASSERT_TRUE(waitFor([&] { return m_desktop->count(QStringLiteral("asked")) > 0; }));
    m_portal->kill();
    ASSERT_TRUE(waitFor([&] { return answer.has_value(); }));
    EXPECT_EQ(answer->outcome, Outcome::Cancelled);
}

TEST_F(DesktopColorTest, WithoutAPickerInThePortalOrAPortalItIsUnavailable)
{
    EXPECT_EQ(sampleWith(m_sampler).outcome, Outcome::Unavailable);
    ASSERT_NO_FATAL_FAILURE(startPortal(""));
    EXPECT_EQ(sampleWith(m_sampler).outcome, Outcome::Unavailable);
    PortalColorSampler withoutBus{QDBusConnection(QString())};
    EXPECT_EQ(sampleWith(withoutBus).outcome, Outcome::Unavailable);
}

TEST_F(DesktopColorTest, APortalsAnswerThatIsNoColourIsNone)
{
    ASSERT_NO_FATAL_FAILURE(startPortal("broken"));
    EXPECT_EQ(sampleWith(m_sampler).outcome, Outcome::Unavailable);
}

TEST_F(DesktopColorTest, TheCompositorsOwnPicker)
{
    KWinColorSampler sampler(m_bus);
    EXPECT_EQ(sampleWith(sampler).outcome, Outcome::Unavailable) << "another compositor";
    ASSERT_NO_FATAL_FAILURE(startDesktop("kwin", "pick"));
    const ColorSample sample = sampleWith(sampler);
    ASSERT_EQ(sample.outcome, Outcome::Picked) << qPrintable(sample.reason);
    EXPECT_EQ(sample.red * 255, 0x12);
    EXPECT_EQ(sample.green * 255, 0x34);
    EXPECT_EQ(sample.blue * 255, 0x56);
}

TEST_F(DesktopColorTest, TheCompositorsOwnPickerCancelledOrBroken)
{
    KWinColorSampler sampler(m_bus);
    ASSERT_NO_FATAL_FAILURE(startDesktop("kwin", "cancel"));
    EXPECT_EQ(sampleWith(sampler).outcome, Outcome::Cancelled);
    m_desktop.reset();
    ASSERT_TRUE(waitFor(
        [&] { return !m_bus.interface()->isServiceRegistered(QStringLiteral("org.kde.KWin")).value(); }));
    ASSERT_NO_FATAL_FAILURE(startDesktop("kwin", "broken"));
    EXPECT_EQ(sampleWith(sampler).outcome, Outcome::Unavailable);
}

TEST(FirstColorSamplerTest, GoesOnFromAWayThatCannotButNotFromOneThatWasCancelled)
{
    using testing::FakeColorSampler;
    std::vector<std::unique_ptr<ColorSampler>> ways;
    for (int i = 0; i < 3; ++i)
        ways.push_back(std::make_unique<FakeColorSampler>());
    const auto way = [&ways](int i) { return static_cast<FakeColorSampler *>(ways[std::size_t(i)].get()); };
    FakeColorSampler *const first = way(0);
    FakeColorSampler *const second = way(1);
    FakeColorSampler *const third = way(2);
    FirstColorSampler sampler(std::move(ways));
    QList<Outcome> outcomes;
    const auto sample = [&] { sampler.sample([&](const ColorSample &s) { outcomes.append(s.outcome); }); };
    const ColorSample unavailable;
    const ColorSample cancelled{Outcome::Cancelled, 0, 0, 0, {}};

    sample();
    sample();
    EXPECT_EQ(first->samplings, 1) << "one at a time";
    first->answer(unavailable);
    ASSERT_TRUE(second->isOpen());
    second->answer(cancelled);
    EXPECT_EQ(third->samplings, 0);
    sample();
    first->answer(unavailable);
    second->answer(unavailable);
    third->answer(unavailable);
    EXPECT_EQ(outcomes, (QList<Outcome>{Outcome::Cancelled, Outcome::Unavailable}));
}

} // namespace
} // namespace quillbay::platform
