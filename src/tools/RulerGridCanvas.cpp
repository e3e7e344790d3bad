#include "tools/RulerGridCanvas.h"

#include "tools/RulerScale.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

namespace quillbay {

namespace {

constexpr int dash = 4;
constexpr qreal middleOpacity = 0.15;

/// A rectangle of device pixels, and how strong it is.
struct Bar
{
    QRect place;
    qreal opacity;
};

/// The lines of a canvas in device pixels. Those of the vertical ruler are the horizontal ones with the axes
/// changed over.
QList<Bar> linesAlong(QSizeF size, qreal ratio)
{
    const int line = rulerLineWidth(ratio);
    const auto device = [ratio](qreal length) { return qRound(length * ratio); };
    const int depth = int(size.height() * ratio);
    QList<Bar> bars;
    const int middle = rulerLineStart(size.width() / 2, size.width(), ratio);
    for (int y = 0; y < size.height(); y += 2 * dash)
        bars.append({QRect(middle, device(y), line, device(y + dash) - device(y)), middleOpacity});
    for (const RulerTick &tick : rulerTicks(size.width())) {
        const int x = rulerLineStart(tick.position, size.width(), ratio);
        const int length = device(tick.length);
        bars.append({QRect(x, 0, line, length), tick.opacity});
        bars.append({QRect(x, depth - length, line, length), tick.opacity});
    }
    return bars;
}

QList<Bar> allLines(QSizeF size, qreal ratio)
{
    QList<Bar> bars = linesAlong(size, ratio);
    for (const Bar &bar : linesAlong(size.transposed(), ratio)) {
        const QRect &place = bar.place;
        bars.append({QRect(place.y(), place.x(), place.height(), place.width()), bar.opacity});
    }
    return bars;
}

} // namespace

RulerGridCanvas::RulerGridCanvas(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void RulerGridCanvas::setInk(const QColor &ink)
{
    if (ink == m_ink)
        return;
    m_ink = ink;
    Q_EMIT inkChanged();
    update();
}

void RulerGridCanvas::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() == before.size())
        return;
    update();
    const QList<int> horizontal = rulerLabels(now.width());
    if (horizontal != m_horizontalLabels) {
        m_horizontalLabels = horizontal;
        Q_EMIT horizontalLabelsChanged();
    }
    const QList<int> vertical = rulerLabels(now.height());
    if (vertical != m_verticalLabels) {
        m_verticalLabels = vertical;
        Q_EMIT verticalLabelsChanged();
    }
}

void RulerGridCanvas::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        update();
}

QSGNode *RulerGridCanvas::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (!node)
        node = new QSGNode;
    const qreal ratio = window()->effectiveDevicePixelRatio();
    QSGNode *next = node->firstChild();
    for (const Bar &bar : allLines(size(), ratio)) {
        auto *rectangle = static_cast<QSGRectangleNode *>(next);
        if (!rectangle) {
            rectangle = window()->createRectangleNode();
            node->appendChildNode(rectangle);
        }
        next = rectangle->nextSibling();
        QColor color = m_ink;
        color.setAlphaF(float(bar.opacity * m_ink.alphaF()));
        rectangle->setRect(QRectF(QPointF(bar.place.topLeft()) / ratio, QSizeF(bar.place.size()) / ratio));
        rectangle->setColor(color);
    }
    while (next) {
        QSGNode *const surplus = next;
        next = surplus->nextSibling();
        node->removeChildNode(surplus);
        delete surplus;
    }
    return node;
}

} // namespace quillbay
