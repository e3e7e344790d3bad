#include "ui/vocabulary/Spring.h"

#include <cmath>
#include <numbers>
#include <ostream>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

struct Case
{
    double response;
    double dampingFraction;
};

std::ostream &operator<<(std::ostream &out, const Case &spring)
{
    return out << spring.response << "/" << spring.dampingFraction;
}

// The equation of motion, by the classical Runge-Kutta method.
SpringState integrated(const Case &spring, SpringState state, double seconds)
{
    const double w = 2 * std::numbers::pi / spring.response;
    const auto slope = [&](SpringState s) {
        return SpringState{s.velocity, -2 * spring.dampingFraction * w * s.velocity - w * w * s.displacement};
    };
    const auto moved = [](SpringState s, SpringState d, double h) {
        return SpringState{s.displacement + h * d.displacement, s.velocity + h * d.velocity};
    };
    const int steps = 4000;
    const double h = seconds / steps;
    for (int i = 0; i < steps; ++i) {
        const SpringState a = slope(state);
        const SpringState b = slope(moved(state, a, h / 2));
        const SpringState c = slope(moved(state, b, h / 2));
        const SpringState d = slope(moved(state, c, h));
        state = moved(state,
                      {a.displacement + 2 * (b.displacement + c.displacement) + d.displacement,
                       a.velocity + 2 * (b.velocity + c.velocity) + d.velocity},
                      h / 6);
    }
    return state;
}

class SpringTest : public ::testing::TestWithParam<Case>
{
protected:
    Spring spring{GetParam().response, GetParam().dampingFraction};
};

TEST_P(SpringTest, followsItsEquationOfMotion)
{
    for (const SpringState start :
         {Spring::unitStep, SpringState{-1, 20}, SpringState{-1, -5}, SpringState{0, 3}}) {
        for (const double part : {0.1, 0.5, 1.0, 2.0}) {
            const double seconds = part * GetParam().response;
            const SpringState exact = spring.after(start, seconds);
            const SpringState stepped = integrated(GetParam(), start, seconds);
            EXPECT_NEAR(exact.displacement, stepped.displacement, 1e-6);
            EXPECT_NEAR(exact.velocity, stepped.velocity, 1e-4);
        }
        EXPECT_NEAR(spring.after(start, 0).displacement, start.displacement, 1e-12);
        EXPECT_NEAR(spring.after(start, 0).velocity, start.velocity, 1e-9);
    }
}

TEST_P(SpringTest, settlesWhenItStaysWithinTheTolerance)
{
    for (const SpringState start :
         {Spring::unitStep, SpringState{-1, 20}, SpringState{-1, -5}, SpringState{0, 3}}) {
        const double settled = spring.settleTime(start, Spring::tolerance);
        ASSERT_GT(settled, 0);
        EXPECT_NEAR(std::abs(spring.after(start, settled).displacement), Spring::tolerance, 1e-7);
        for (double seconds = settled; seconds < 3 * settled; seconds += 0.001)
            ASSERT_LE(std::abs(spring.after(start, seconds).displacement), Spring::tolerance + 1e-9)
                << seconds;
        EXPECT_GT(std::abs(spring.after(start, settled - 0.0005).displacement), Spring::tolerance);
    }
}

INSTANTIATE_TEST_SUITE_P(Springs, SpringTest,
                         ::testing::Values(Case{0.4, 0.8}, Case{0.5, 0.8}, Case{0.3, 0.825}, Case{0.2, 0.825},
                                           Case{0.3, 0.7}, Case{0.25, 0.75}, Case{0.35, 0.7}, Case{0.4, 0.1},
                                           Case{0.4, 1}, Case{0.4, 1.00001}, Case{0.4, 2.5}));

TEST(Spring, withoutResponseOrWithoutAWayIsThereAtOnce)
{
    EXPECT_EQ(Spring(0, 0.8).settleTime(), 0);
    EXPECT_EQ(Spring(0, 0.8).value(0), 1);
    EXPECT_EQ(Spring(0.4, 0.8).settleTime({0, 0}, 0), 0);
}

} // namespace
} // namespace quillbay
