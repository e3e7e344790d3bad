#include "ui/GridColumns.h"

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr qreal padding = 32;
constexpr qreal wideFrom = 1000;

/// `count` columns no wider than `maximum`, together in the middle.
GridColumns centred(qreal width, int count, qreal maximum, qreal spacing, qreal edge)
{
    const qreal available = std::max(0.0, width - 2 * edge);
    const qreal itemWidth = (available - spacing * (count - 1)) / count;
    GridColumns columns;
    columns.count = count;
    columns.columnWidth = int(std::min(itemWidth, maximum));
    columns.spacing = int(spacing);
    const qreal used = count * columns.columnWidth + (count - 1) * spacing;
    columns.leading = int(std::lround(edge + (available - used) / 2));
    return columns;
}

int countOf(qreal width, qreal stride)
{
    return std::max(1, int(std::max(0.0, width - 2 * padding) / stride));
}

} // namespace

GridColumns appColumns(qreal width)
{
    const bool wide = width > wideFrom;
    return centred(width, countOf(width, wide ? 162 : 134), wide ? 180 : 140, wide ? 32 : 24, padding);
}

GridColumns cardColumns(qreal width)
{
    return centred(width, countOf(width, 284), 280, 24, padding);
}

GridColumns adaptiveColumns(qreal width, qreal minimum, qreal spacing, qreal edge)
{
    const int count = std::max(1, int((width - 2 * edge + spacing) / (minimum + spacing)));
    return centred(width, count, width, spacing, edge);
}

void ColumnsOfWidth::setWidth(qreal width)
{
    if (width == m_width)
        return;
    m_width = width;
    Q_EMIT widthChanged();
    update();
}

void ColumnsOfWidth::update()
{
    const GridColumns now = columns(m_width);
    if (now == m_columns)
        return;
    m_columns = now;
    Q_EMIT changed();
}

AdaptiveColumns::AdaptiveColumns(QObject *parent)
    : ColumnsOfWidth(parent)
{
    connect(this, &AdaptiveColumns::askedChanged, this, &AdaptiveColumns::update);
}

} // namespace quillbay
