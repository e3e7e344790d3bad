#include "platform/linux/icons/GenericIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace quillbay::platform {

namespace {

void drawPlate(QPainter &painter)
{
    const QRectF plate(8, 8, 84, 84);
    QLinearGradient body(0, 8, 0, 92);
    body.setColorAt(0, QColor(0xa9, 0xb4, 0xc6));
    body.setColorAt(1, QColor(0x71, 0x7d, 0x93));
    painter.setBrush(body);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(plate, 20, 20);

    QLinearGradient edge(0, 8, 0, 92);
    edge.setColorAt(0, QColor(255, 255, 255, 110));
    edge.setColorAt(1, QColor(0, 0, 0, 50));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(edge, 1.5));
    painter.drawRoundedRect(plate.adjusted(0.75, 0.75, -0.75, -0.75), 19.25, 19.25);
}

void drawWindow(QPainter &painter)
{
    const QRectF window(27, 31, 46, 38);
    QPainterPath frame;
    frame.addRoundedRect(window, 7, 7);
    QPainterPath pane;
    pane.addRoundedRect(QRectF(31, 42, 38, 23), 3.5, 3.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 235));
    painter.drawPath(frame.subtracted(pane));
    painter.setBrush(QColor(255, 255, 255, 70));
    painter.drawPath(pane);
    painter.setBrush(QColor(0x71, 0x7d, 0x93));
    for (const qreal x : {33.5, 39.5, 45.5})
        painter.drawEllipse(QPointF(x, 36.75), 1.8, 1.8);
}

} // namespace

QImage drawGenericIcon(int edge)
{
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(edge / 100.0, edge / 100.0);
    drawPlate(painter);
    drawWindow(painter);
    return image;
}

} // namespace quillbay::platform
