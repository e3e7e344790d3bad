#include "ui/GridColumns.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr qreal padding = 32;
constexpr qreal wideFrom = 1000;

} // namespace

GridColumns appColumns(qreal width)
{
    const bool wide = width > wideFrom;
    const qreal spacing = wide ? 32 : 24;
    const qreal maximumSize = wide ? 180 : 140;
    const qreal stride = wide ? 162 : 134;

    const qreal available = std::max(0.0, width - 2 * padding);
    const int count = std::max(1, int(available / stride));
    const qreal itemWidth = (available - spacing * (count - 1)) / count;

    GridColumns columns;
    columns.count = count;
    columns.columnWidth = int(std::min(itemWidth, maximumSize));
    columns.spacing = int(spacing);
    const qreal used = count * columns.columnWidth + (count - 1) * spacing;
    columns.leading = int(std::lround(padding + (available - used) / 2));
    return columns;
}

void AppColumns::setWidth(qreal width)
{
    if (width == m_width)
        return;
    m_width = width;
    Q_EMIT widthChanged();
    const GridColumns columns = appColumns(width);
    if (columns == m_columns)
        return;
    m_columns = columns;
    Q_EMIT changed();
}

} // namespace quillbay
