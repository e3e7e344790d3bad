#pragma once

#include <QList>

namespace quillbay {

/// A line across the edge of a ruler. Lengths in device-independent pixels.
struct RulerTick
{
    int position; ///< From the ruler's beginning.
    int length;
    qreal opacity;

    bool operator==(const RulerTick &) const = default;
};

/// One tick every 10, from 0 to the whole part of `extent`; longer and stronger ones every 50 and every 100.
QList<RulerTick> rulerTicks(qreal extent);

/// Where numbers stand: at every 100, but not at 0 and not within 20 of the far end.
QList<int> rulerLabels(qreal extent);

/// Lines are drawn on whole device pixels. The first of those of a line 1 wide at `position`, that stays
/// within an `extent`; all but the result in device-independent pixels.
int rulerLineStart(qreal position, qreal extent, qreal devicePixelRatio);
/// How many device pixels such a line is wide: at least one.
int rulerLineWidth(qreal devicePixelRatio);

} // namespace quillbay
