#pragma once

namespace quillbay {

/// Where a moving value is, seen from its target, and how fast it moves. Any unit of length; per second.
struct SpringState
{
    double displacement = 0; ///< value - target
    double velocity = 0;

    bool operator==(const SpringState &) const = default;
};

/// A damped oscillator of unit mass in closed form: exact at every moment, whatever the frame rate.
///
/// `response` is the period, in seconds, that it would have without damping; a response of 0 or less is there
/// at once. `dampingFraction` is the fraction of critical damping: below 1 it overshoots, from 1 on it creeps
/// in. It must be above 0, for an undamped spring never rests.
class Spring
{
public:
    /// How near, as a part of the way, a spring must stay to its target to count as settled.
    static constexpr double tolerance = 0.001;
    /// From 0 at rest towards 1.
    static constexpr SpringState unitStep{-1, 0};

    Spring(double response, double dampingFraction);

    /// The state `seconds` after `start`.
    SpringState after(SpringState start, double seconds) const;
    /// Seconds after which a motion from `start` stays within `distance` of its target.
    double settleTime(SpringState start, double distance) const;

    /// The unit step: 0 at 0 seconds, in the end 1.
    double value(double seconds) const;
    /// Seconds after which `value` stays within the tolerance of 1.
    double settleTime() const;

    /// Undamped angular frequency, per second.
    double frequency() const { return m_frequency; }

private:
    /// The last moment, not before 0, at which the motion is outside `distance` and turns back to the target.
    double lastTurnOutside(SpringState start, double distance) const;

    double m_frequency;
    double m_damping;
};

} // namespace quillbay
