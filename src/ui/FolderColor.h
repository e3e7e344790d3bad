#pragma once

#include <QPointF>
#include <QString>
#include <QStringView>

namespace quillbay {

/// A colour by its components: 0 to 1 each, but whoever types numbers can leave that range.
struct ColorComponents
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

/// A place on the colour wheel.
struct WheelPlace
{
    double hue = 0;        ///< 0 to below 1, from red on the right clockwise.
    double saturation = 0; ///< 0 in the centre, 1 at the edge.
};

/// What the colour editor of folders takes a text for: as `colorFromHex`, but always opaque, and mid grey for
/// what is not of 3 or 6 digits.
ColorComponents folderColorFromHex(QStringView text);
/// "#RRGGBB". A component beyond 1 gets the digits that it needs, a negative one those of its complement.
QString colorToHex(const ColorComponents &color);
/// The component as it is shown, 0 to 255 for 0 to 1; cut off, not rounded, except where
/// only the last digits of the arithmetic keep it from a whole number.
int byteOf(double component);

/// Full brightness.
ColorComponents colorAt(const WheelPlace &place);
WheelPlace wheelPlaceOf(const ColorComponents &color);
/// The place at an offset from the centre of a wheel of that radius; beyond the edge, that at the edge.
WheelPlace wheelPlaceAt(QPointF offset, double radius);
/// The reverse.
QPointF offsetOf(const WheelPlace &place, double radius);

} // namespace quillbay
