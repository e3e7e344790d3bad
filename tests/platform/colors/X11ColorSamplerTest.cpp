#include "platform/linux/colors/X11ColorSampler.h"

#include "platform/colors/PaintedScreen.h"
#include "platform/linux/colors/Loupe.h"

#include <QTest>

#include <optional>

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

using Outcome = ColorSample::Outcome;
using testing::PaintedScreen;

/// A monitor of ratio 1 beside one whose ratio a test sets.
qreal rightRatio = 1;
QList<X11Monitor> monitors()
{
    return {{QRect(0, 0, 500, 800), 1}, {QRect(500, 0, 500, 800), rightRatio}};
}

class X11ColorSamplerTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_screen = new PaintedScreen; }
    static void TearDownTestSuite()
    {
        delete s_screen;
        s_screen = nullptr;
    }

    X11ColorSamplerTest()
        : m_sampler(std::make_unique<X11ColorSampler>(s_screen->display(), monitors))
    {
        rightRatio = 1;
        s_screen->xdotool("mousemove 200 150");
    }

    void sample()
    {
        m_sampler->sample([this](const ColorSample &answer) {
            EXPECT_FALSE(m_answer) << "told twice";
            m_answer = answer;
        });
        EXPECT_FALSE(m_answer) << "never before the call returns";
    }
    /// Samples and waits until the loupe is there.
    void begin()
    {
        sample();
        ASSERT_TRUE(waitFor([] { return s_screen->windows().size() == 1; }));
    }
    /// Waits until the loupe has come to where it belongs for this place of the pointer.
    static bool waitForLoupe(QPoint pointer, const X11Monitor &monitor)
    {
        const Loupe loupe(monitor.ratio);
        const QRect place(loupe.place(pointer, monitor.area), loupe.size());
        return waitFor([&] { return s_screen->windows() == QList<QRect>{place}; });
    }
    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 20000); }

    Outcome outcome()
    {
        EXPECT_TRUE(waitFor([this] { return m_answer.has_value(); }));
        EXPECT_TRUE(waitFor([] { return s_screen->windows().isEmpty(); })) << "the loupe stays";
        return m_answer ? m_answer->outcome : Outcome::Unavailable;
    }
    void expectPicked(QPoint place)
    {
        ASSERT_EQ(outcome(), Outcome::Picked) << qPrintable(m_answer->reason);
        const QColor color = PaintedScreen::colorAt(place);
        EXPECT_EQ(m_answer->red * 255, color.red());
        EXPECT_EQ(m_answer->green * 255, color.green());
        EXPECT_EQ(m_answer->blue * 255, color.blue());
    }

    static PaintedScreen *s_screen;
    std::unique_ptr<X11ColorSampler> m_sampler;
    std::optional<ColorSample> m_answer;
};

PaintedScreen *X11ColorSamplerTest::s_screen = nullptr;

TEST_F(X11ColorSamplerTest, AClickTakesThePixelUnderThePointer)
{
    ASSERT_NO_FATAL_FAILURE(begin());
    s_screen->xdotool("mousemove 437 311 click 1");
    expectPicked({437, 311});
}

TEST_F(X11ColorSamplerTest, APointerThatRunsIntoTheLoupeTakesWhatIsBelowIt)
{
    ASSERT_NO_FATAL_FAILURE(begin());
    const QRect loupe = s_screen->windows().value(0);
    const QPoint inside = loupe.center();
    s_screen->xdotool(qPrintable(QStringLiteral("mousemove %1 %2 click 1").arg(inside.x()).arg(inside.y())));
    expectPicked(inside);
}

TEST_F(X11ColorSamplerTest, ArrowsMoveByOnePixelAndReturnTakesIt)
{
    ASSERT_NO_FATAL_FAILURE(begin());
    s_screen->xdotool("key Right Right Right Down Left Up Up");
    EXPECT_TRUE(waitFor([] { return s_screen->pointer() == QPoint(202, 149); }));
    s_screen->xdotool("key Return");
    expectPicked({202, 149});
}

TEST_F(X11ColorSamplerTest, EscapeAndTheRightButtonCancelAndThePointerIsFree)
{
    for (const char *way : {"key Escape", "click 3"}) {
        SCOPED_TRACE(way);
        m_answer.reset();
        ASSERT_NO_FATAL_FAILURE(begin());
        EXPECT_FALSE(s_screen->grabPointer()) << "nothing else may hear of the pointer meanwhile";
        s_screen->xdotool(way);
        EXPECT_EQ(outcome(), Outcome::Cancelled);
        EXPECT_TRUE(waitFor([] { return s_screen->grabPointer(); }));
        s_screen->letGo();
    }
}

TEST_F(X11ColorSamplerTest, TheKeyThatBeganItTakesNothingWhenItComesUp)
{
    s_screen->xdotool("keydown Return");
    ASSERT_NO_FATAL_FAILURE(begin());
    s_screen->xdotool("keyup Return mousemove 10 20");
    EXPECT_TRUE(waitForLoupe({10, 20}, monitors()[0]));
    EXPECT_FALSE(m_answer);
    s_screen->xdotool("click 1");
    expectPicked({10, 20});
}

TEST_F(X11ColorSamplerTest, TheLoupeShowsThePixelsInTheSizeOfItsMonitor)
{
    for (const qreal ratio : {1.25, 2.0}) {
        SCOPED_TRACE(ratio);
        rightRatio = ratio;
        m_answer.reset();
        s_screen->xdotool("mousemove 200 150");
        ASSERT_NO_FATAL_FAILURE(begin());
        EXPECT_TRUE(waitForLoupe({200, 150}, monitors()[0]));
        const QPoint pointer(999, 799);
        s_screen->xdotool("mousemove 999 799");
        ASSERT_TRUE(waitForLoupe(pointer, monitors()[1]));

        const Loupe loupe(ratio);
        const QPoint corner = loupe.place(pointer, monitors()[1].area);
        const auto shows = [&](int x, int y, QColor color) {
            return waitFor([&] {
                const QPoint place = corner + loupe.cell(x, y).center();
                return s_screen->picture({place, QSize(1, 1)}).pixelColor(0, 0) == color;
            });
        };
        EXPECT_TRUE(shows(Loupe::reach, Loupe::reach, PaintedScreen::colorAt(pointer)));
        EXPECT_TRUE(shows(0, 2, PaintedScreen::colorAt(pointer - QPoint(Loupe::reach, Loupe::reach - 2))));
        s_screen->xdotool("click 1");
        expectPicked(pointer);
    }
}

TEST_F(X11ColorSamplerTest, WaitsForAMenuToCloseButNotForEver)
{
    ASSERT_TRUE(s_screen->grabPointer());
    sample();
    EXPECT_EQ(outcome(), Outcome::Unavailable);
    s_screen->letGo();

    m_answer.reset();
    ASSERT_TRUE(s_screen->grabPointer());
    sample();
    // It has been refused once it has run once.
    QCoreApplication::processEvents();
    s_screen->letGo();
    ASSERT_TRUE(waitFor([] { return s_screen->windows().size() == 1; }));
    s_screen->xdotool("key Escape");
    EXPECT_EQ(outcome(), Outcome::Cancelled);
}

TEST_F(X11ColorSamplerTest, EndsWithTheSampler)
{
    ASSERT_NO_FATAL_FAILURE(begin());
    m_sampler.reset();
    EXPECT_TRUE(waitFor([] { return s_screen->windows().isEmpty() && s_screen->grabPointer(); }));
    s_screen->letGo();
    EXPECT_FALSE(m_answer);
}

TEST(X11ColorSamplerWithoutServerTest, IsUnavailable)
{
    X11ColorSampler sampler(":9999", monitors);
    std::optional<ColorSample> answer;
    sampler.sample([&](const ColorSample &sample) { answer = sample; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 20000));
    EXPECT_EQ(answer->outcome, Outcome::Unavailable);
}

} // namespace
} // namespace quillbay::platform
