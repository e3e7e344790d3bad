#include "support/FakeDesktop.h"
#include "ui/vocabulary/Spring.h"
#include "ui/vocabulary/Theme.h"

#include <QAnimationDriver>
#include <QColor>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QVariantAnimation>

#include <cmath>
#include <limits>
#include <memory>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

// The clock of all animations, turned by hand.
class Clock : public QAnimationDriver
{
public:
    Clock() { install(); }
    ~Clock() override { uninstall(); }

    void turn(int milliseconds)
    {
        m_now += milliseconds;
        QCoreApplication::processEvents();
        advance();
        QCoreApplication::processEvents();
    }
    qint64 elapsed() const override { return m_now; }

protected:
    // The time that a driver tells is that since it was started.
    void start() override
    {
        m_now = 0;
        QAnimationDriver::start();
    }

private:
    qint64 m_now = 0;
};

class SpringMotionTest : public ::testing::Test
{
protected:
    // The toolkit lets real time pass between the start of the first animation and that of the driver. With
    // one that always runs no motion of a test is that first one.
    SpringMotionTest()
    {
        m_beat.setDuration(std::numeric_limits<int>::max());
        m_beat.start();
        clock.turn(0);
    }
    void load(const QByteArray &qml)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Quillbay.Vocabulary\n" + qml, {});
        m_object.reset(component.create());
        ASSERT_TRUE(m_object) << qPrintable(component.errorString());
    }
    void set(const char *property, const QVariant &value)
    {
        m_object->setProperty(property, value);
        // A motion begins at the first turn of the clock after its start.
        clock.turn(0);
    }
    QVariant get(const char *property) const { return m_object->property(property); }
    double number(const char *property) const { return get(property).toDouble(); }
    QObject *object() const { return m_object.get(); }

    testing::FakeAppearance appearance;
    testing::FakeWindowEffects effects;
    Theme theme{appearance, effects};
    Clock clock;

private:
    QVariantAnimation m_beat;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_object;
};

const QByteArray springy = R"(QtObject {
    property real value: 0
    property color tint: "#000000"
    property bool running: motion.running
    Behavior on value { SpringMotion { id: motion; preset: SpringMotion.Content } }
    Behavior on tint { SpringMotion { response: 0.1; dampingFraction: 0.5 } }
})";

TEST_F(SpringMotionTest, takesABehaviorAlongTheSpringAndRests)
{
    load(springy);
    const Spring spring(0.5, 0.8);
    set("value", 100);
    const int settled = int(std::ceil(1000 * spring.settleTime()));
    for (int now = 10; now < settled; now += 10) {
        clock.turn(10);
        ASSERT_NEAR(number("value"), 100 * spring.value(now / 1000.0), 1e-6) << now;
        ASSERT_TRUE(get("running").toBool());
    }
    clock.turn(10);
    EXPECT_EQ(number("value"), 100);
    EXPECT_FALSE(get("running").toBool());
}

TEST_F(SpringMotionTest, keepsItsVelocityWhenTheTargetChanges)
{
    load(springy);
    const Spring spring(0.5, 0.8);
    set("value", 100);
    clock.turn(80);
    const SpringState then = spring.after({-100, 0}, 0.08);
    ASSERT_NEAR(number("value"), 100 + then.displacement, 1e-6);

    set("value", -50);
    clock.turn(20);
    const SpringState start{100 + then.displacement + 50, then.velocity};
    EXPECT_NEAR(number("value"), -50 + spring.after(start, 0.02).displacement, 1e-6);
    EXPECT_GT(number("value"), 100 + then.displacement) << "it goes on upwards before it turns round";
    for (int i = 0; i < 200 && get("running").toBool(); ++i)
        clock.turn(10);
    EXPECT_EQ(number("value"), -50);
    EXPECT_FALSE(get("running").toBool());
}

TEST_F(SpringMotionTest, interpolatesColorsWithoutLeavingTheirRange)
{
    load(springy);
    const auto red = [this] { return get("tint").value<QColor>().red(); };
    set("tint", QColor(Qt::white));
    clock.turn(20);
    EXPECT_NEAR(red(), 255 * Spring(0.1, 0.5).value(0.02), 1);
    clock.turn(40);
    EXPECT_GT(Spring(0.1, 0.5).value(0.06), 1) << "the spring is beyond";
    EXPECT_EQ(red(), 255);
}

TEST_F(SpringMotionTest, jumpsUnderReducedMotion)
{
    load(springy);
    appearance.setReducedMotion(true);
    QSignalSpy changes(object(), SIGNAL(valueChanged()));
    set("value", 100);
    EXPECT_EQ(number("value"), 100);
    EXPECT_FALSE(get("running").toBool());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SpringMotionTest, servesATransitionBothWays)
{
    load(R"(Item {
        id: root
        property bool moved: false
        property real place: box.x
        Item { id: box }
        states: State {
            name: "moved"
            when: root.moved
            PropertyChanges { target: box; x: 50; y: 20 }
        }
        transitions: Transition {
            reversible: true
            to: "moved"
            SpringMotion { properties: "x,y"; preset: SpringMotion.Move }
        }
    })");
    const Spring spring(0.3, 0.825);
    set("moved", true);
    clock.turn(50);
    EXPECT_NEAR(number("place"), 50 * spring.value(0.05), 1e-6);
    clock.turn(2000);
    EXPECT_EQ(number("place"), 50);
    set("moved", false);
    clock.turn(50);
    EXPECT_NEAR(number("place"), 50 - 50 * spring.value(0.05), 0.5);
    clock.turn(2000);
    EXPECT_EQ(number("place"), 0);
}

TEST_F(SpringMotionTest, movesByItselfFromAGivenValue)
{
    load(R"(QtObject {
        property real value: 3
            SpringMotion on value { from: 10; to: 20; response: 0.5; dampingFraction: 1 }
    })");
    clock.turn(0);
    clock.turn(100);
    EXPECT_NEAR(number("value"), 10 + 10 * Spring(0.5, 1).value(0.1), 1e-6);
    clock.turn(3000);
    EXPECT_EQ(number("value"), 20);
}

TEST_F(SpringMotionTest, survivesTheEndOfWhatItMoves)
{
    load(R"(Item {
        id: root
        property bool shown: true
        property Item box: loader.item
        Loader {
            id: loader
            active: root.shown
            sourceComponent: Item {
                x: root.width
                Behavior on x { SpringMotion {} }
            }
        }
        SpringMotion { target: loader.item; property: "y"; to: 40; running: root.width > 0 }
    })");
    set("width", 80);
    clock.turn(50);
    const auto *box = get("box").value<QObject *>();
    ASSERT_GT(box->property("x").toDouble(), 0);
    ASSERT_GT(box->property("y").toDouble(), 0);
    set("shown", false);
    clock.turn(50);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    clock.turn(50);
    EXPECT_FALSE(get("box").value<QObject *>());
}

} // namespace
} // namespace quillbay
