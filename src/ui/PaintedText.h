#pragma once

#include <QImage>
#include <QPoint>
#include <QRgb>
#include <QString>

namespace quillbay {

/// How a text is painted. Lengths are in device-independent pixels.
struct TextLook
{
    QString text;
    QRgb color = 0; ///< Not premultiplied.
    int pixelSize = 13;
    int weight = 400;
    int maximumLineCount = 1;
    bool isCentered = false;
    qreal width = 0; ///< Of the room for each line.
    qreal ratio = 1; ///< Device pixels per pixel.

    bool operator==(const TextLook &) const = default;
};

/// A text as a picture, no larger than its letters need.
struct PaintedText
{
    QImage picture; ///< Premultiplied; null for a text without letters.
    QPoint place;   ///< Where it lies in its room, in device pixels; letters may reach beyond the room.
};

/// Of a line in that font, in whole device-independent pixels.
int textLineHeight(int pixelSize, int weight);

/// Lays the text out and paints it, or gives what it painted before: a few hundred are kept. Thread: main
/// thread; a new one costs about a tenth of a millisecond.
PaintedText paintText(const TextLook &look);

} // namespace quillbay
