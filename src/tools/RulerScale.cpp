#include "tools/RulerScale.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr int step = 10;

RulerTick tickAt(int position)
{
    if (position % 100 == 0)
        return {position, 12, 0.8};
    if (position % 50 == 0)
        return {position, 8, 0.5};
    return {position, 4, 0.25};
}

} // namespace

QList<RulerTick> rulerTicks(qreal extent)
{
    QList<RulerTick> ticks;
    for (int position = 0; position <= int(extent); position += step)
        ticks.append(tickAt(position));
    return ticks;
}

QList<int> rulerLabels(qreal extent)
{
    QList<int> labels;
    for (int position = 100; position < extent - 20; position += 100)
        labels.append(position);
    return labels;
}

int rulerLineStart(qreal position, qreal extent, qreal devicePixelRatio)
{
    const int last = int(std::floor(extent * devicePixelRatio)) - rulerLineWidth(devicePixelRatio);
    return std::clamp(int(std::floor(position * devicePixelRatio)), 0, std::max(0, last));
}

int rulerLineWidth(qreal devicePixelRatio)
{
    return std::max(1, int(std::lround(devicePixelRatio)));
}

} // namespace quillbay
