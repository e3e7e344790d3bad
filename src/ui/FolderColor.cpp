#include "ui/FolderColor.h"

#include "ui/vocabulary/ColorHex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace quillbay {

namespace {

constexpr double turn = 2 * std::numbers::pi;

/// `hue` into 0 to below 1.
double wrapped(double hue)
{
    const double part = hue - std::floor(hue);
    return part < 1 ? part : 0;
}

} // namespace

ColorComponents folderColorFromHex(QStringView text)
{
    const int digits = colorDigitCount(text);
    const QColor color = digits == 3 || digits == 6 ? colorFromHex(text) : QColor(128, 128, 128);
    return {color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0, 1};
}

int byteOf(double component)
{
    constexpr double most = std::numeric_limits<int>::max();
    const double value = std::clamp(component * 255, -most, most);
    const double nearest = std::round(value);
    return int(std::abs(value - nearest) < 1e-6 ? nearest : value);
}

QString colorToHex(const ColorComponents &color)
{
    return QString::asprintf("#%02X%02X%02X", unsigned(byteOf(color.red)), unsigned(byteOf(color.green)),
                             unsigned(byteOf(color.blue)));
}

ColorComponents colorAt(const WheelPlace &place)
{
    // How much of a colour there is falls off over a sixth of the wheel on both sides of its own third.
    const auto component = [&place](double own) {
        const double distance = std::abs(wrapped(place.hue - own + 0.5) - 0.5) * 6;
        return 1 - place.saturation * std::clamp(distance - 1, 0.0, 1.0);
    };
    return {component(0), component(1 / 3.0), component(2 / 3.0), 1};
}

WheelPlace wheelPlaceOf(const ColorComponents &color)
{
    const auto [least, most] = std::minmax({color.red, color.green, color.blue});
    const double range = most - least;
    if (range <= 0 || most <= 0)
        return {};
    double sixths = 0;
    if (most == color.red)
        sixths = (color.green - color.blue) / range;
    else if (most == color.green)
        sixths = (color.blue - color.red) / range + 2;
    else
        sixths = (color.red - color.green) / range + 4;
    return {wrapped(sixths / 6), std::min(range / most, 1.0)};
}

WheelPlace wheelPlaceAt(QPointF offset, double radius)
{
    return {wrapped(std::atan2(offset.y(), offset.x()) / turn),
            std::min(std::hypot(offset.x(), offset.y()) / radius, 1.0)};
}

QPointF offsetOf(const WheelPlace &place, double radius)
{
    return place.saturation * radius * QPointF(std::cos(turn * place.hue), std::sin(turn * place.hue));
}

} // namespace quillbay
