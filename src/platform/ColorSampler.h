#pragma once

#include <QString>

#include <functional>

namespace quillbay::platform {

/// What became of asking for a colour of the screen.
struct ColorSample
{
    enum class Outcome {
        Picked,
        Cancelled,  ///< The person broke it off.
        Unavailable ///< This desktop, or this way of its, cannot do it; nothing was shown.
    };
    Outcome outcome = Outcome::Unavailable;
    /// Of a picked colour, in sRGB. From 0 to 1; not clamped, as some desktops tell colours outside.
    double red = 0;
    double green = 0;
    double blue = 0;
    QString reason; ///< Of an unavailable one, for the log.
};

/// Lets the person point at a pixel anywhere on the screen. Each way of doing it is an object of its own.
///
/// Thread: main.
class ColorSampler
{
public:
    using Finished = std::function<void(const ColorSample &)>;

    /// What is still open ends without a word: `finished` is not called any more.
    virtual ~ColorSampler() = default;

    /// Starts and returns at once. `finished` is called once, from the event loop, never before this returns.
    /// While one sampling is open, a further call does nothing.
    virtual void sample(Finished finished) = 0;
};

} // namespace quillbay::platform
