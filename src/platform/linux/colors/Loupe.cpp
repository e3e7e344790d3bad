#include "platform/linux/colors/Loupe.h"

#include <QFontDatabase>
#include <QPainter>

#include <algorithm>

namespace quillbay::platform {

namespace {

constexpr int cellLength = 9;
constexpr int labelHeight = 28;
constexpr int distance = 20;
const QColor plate(28, 28, 30);
const QColor outside(58, 58, 60);
const QColor gridLine(128, 128, 128, 90);

/// Where a length fits that should begin `gap` after `point`, else ends as far before it.
int beside(int point, int gap, int length, int first, int last)
{
    const int after = point + gap;
    return after + length <= last ? after : std::max(first, point - gap - length);
}

} // namespace

Loupe::Loupe(qreal ratio)
    : m_ratio(ratio)
    , m_cell(std::max(3, scaled(cellLength)))
    , m_frame(std::max(1, scaled(2)))
{
}

QSize Loupe::size() const
{
    const int side = pixels * m_cell + 2 * m_frame;
    return {side, side + scaled(labelHeight)};
}

QRect Loupe::cell(int x, int y) const
{
    return {m_frame + x * m_cell, m_frame + y * m_cell, m_cell, m_cell};
}

QRect Loupe::label() const
{
    const int top = pixels * m_cell + 2 * m_frame;
    return {0, top, size().width(), size().height() - top};
}

QImage Loupe::picture(const QImage &surroundings, const QString &hex) const
{
    QImage image(size(), QImage::Format_RGB32);
    image.fill(plate);
    QPainter painter(&image);
    for (int y = 0; y < pixels; ++y) {
        for (int x = 0; x < pixels; ++x) {
            const QColor color = surroundings.pixelColor(x, y);
            painter.fillRect(cell(x, y), color.alpha() ? color : outside);
        }
    }
    const int side = pixels * m_cell;
    for (int i = 1; i < pixels; ++i) {
        painter.fillRect(m_frame + i * m_cell, m_frame, 1, side, gridLine);
        painter.fillRect(m_frame, m_frame + i * m_cell, side, 1, gridLine);
    }

    const auto outline = [&painter](QRect inner, int width, const QColor &color) {
        painter.fillRect(inner.adjusted(-width, -width, width, -inner.height()), color);
        painter.fillRect(inner.adjusted(-width, inner.height(), width, width), color);
        painter.fillRect(inner.adjusted(-width, 0, -inner.width(), 0), color);
        painter.fillRect(inner.adjusted(inner.width(), 0, width, 0), color);
    };
    const int line = std::max(1, scaled(1));
    const QRect middle = cell(reach, reach).adjusted(1, 1, 0, 0);
    outline(middle, line, Qt::white);
    outline(middle.adjusted(-line, -line, line, line), line, Qt::black);

    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(scaled(13));
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(label(), Qt::AlignCenter, hex);
    return image;
}

QPoint Loupe::place(QPoint pointer, const QRect &screen) const
{
    const int gap = std::max(scaled(distance), reach + 1);
    const int right = screen.x() + screen.width();
    const int bottom = screen.y() + screen.height();
    return {beside(pointer.x(), gap, size().width(), screen.x(), right),
            beside(pointer.y(), gap, size().height(), screen.y(), bottom)};
}

} // namespace quillbay::platform
