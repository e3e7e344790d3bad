#include "ui/vocabulary/Spring.h"

#include <QtGlobal>

#include <cmath>
#include <limits>
#include <numbers>

namespace quillbay {

namespace {

// Nearer to critical damping than this, the general forms divide by next to nothing.
constexpr double nearlyCritical = 1e-6;

} // namespace

Spring::Spring(double response, double dampingFraction)
    : m_frequency(response > 0 ? 2 * std::numbers::pi / response : std::numeric_limits<double>::infinity())
    , m_damping(dampingFraction)
{
    Q_ASSERT(dampingFraction > 0);
}

SpringState Spring::after(SpringState start, double seconds) const
{
    if (std::isinf(m_frequency))
        return {};
    const auto [y, v] = start;
    const double w = m_frequency;
    const double decay = m_damping * w;
    if (std::abs(m_damping - 1) < nearlyCritical) {
        const double slope = v + w * y;
        const double fade = std::exp(-w * seconds);
        return {(y + slope * seconds) * fade, (v - w * slope * seconds) * fade};
    }
    if (m_damping < 1) {
        const double wd = w * std::sqrt(1 - m_damping * m_damping);
        const double fade = std::exp(-decay * seconds);
        const double cosine = std::cos(wd * seconds);
        const double sine = std::sin(wd * seconds);
        return {fade * (y * cosine + (v + decay * y) / wd * sine),
                fade * (v * cosine - (decay * v + w * w * y) / wd * sine)};
    }
    const double root = w * std::sqrt(m_damping * m_damping - 1);
    const double slow = -decay + root;
    const double fast = -decay - root;
    const double slowPart = (v - fast * y) / (slow - fast);
    const double fastPart = y - slowPart;
    const double slowNow = slowPart * std::exp(slow * seconds);
    const double fastNow = fastPart * std::exp(fast * seconds);
    return {slowNow + fastNow, slow * slowNow + fast * fastNow};
}

double Spring::lastTurnOutside(SpringState start, double distance) const
{
    const auto [y, v] = start;
    const double w = m_frequency;
    const double decay = m_damping * w;
    if (m_damping >= 1 - nearlyCritical) {
        // At most one turn, where the velocity of `after` is zero.
        double turn = 0;
        if (std::abs(m_damping - 1) < nearlyCritical) {
            turn = v / (w * (v + w * y));
        } else {
            const double root = w * std::sqrt(m_damping * m_damping - 1);
            const double slow = -decay + root;
            const double fast = -decay - root;
            turn = std::log(-fast * (y * (slow - fast) - (v - fast * y)) / (slow * (v - fast * y))) /
                   (slow - fast);
        }
        return turn > 0 && std::abs(after(start, turn).displacement) > distance ? turn : 0;
    }
    const double wd = w * std::sqrt(1 - m_damping * m_damping);
    const double halfSwing = std::numbers::pi / wd;
    double first = std::atan2(v * wd, decay * v + w * w * y) / wd;
    if (first < 0)
        first += halfSwing;
    const double reach = std::abs(after(start, first).displacement);
    if (reach <= distance)
        return 0;
    return first + halfSwing * std::floor(std::log(reach / distance) / (decay * halfSwing));
}

double Spring::settleTime(SpringState start, double distance) const
{
    if (std::isinf(m_frequency) || start == SpringState{})
        return 0;
    const auto outside = [&](double seconds) {
        return std::abs(after(start, seconds).displacement) > distance;
    };
    // From the last turn outside on, the motion comes nearer until it is inside for good.
    double low = lastTurnOutside(start, distance);
    double step = 0.25 / m_frequency;
    while (outside(low + step))
        low += step;
    double high = low + step;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (outside(middle) ? low : high) = middle;
    }
    return high;
}

double Spring::value(double seconds) const
{
    return 1 + after(unitStep, seconds).displacement;
}

double Spring::settleTime() const
{
    return settleTime(unitStep, tolerance);
}

} // namespace quillbay
