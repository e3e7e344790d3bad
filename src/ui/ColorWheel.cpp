#include "ui/ColorWheel.h"

#include <QConicalGradient>
#include <QPainter>
#include <QRadialGradient>

namespace quillbay {

QImage colorWheel(int pixels)
{
    QImage wheel(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    wheel.fill(Qt::transparent);
    const QRectF disc = wheel.rect();

    // Qt's angles go the other way round.
    QConicalGradient hues(disc.center(), 0);
    for (int sixth = 0; sixth <= 6; ++sixth)
        hues.setColorAt(sixth / 6.0, QColor::fromHsv((6 - sixth) % 6 * 60, 255, 255));
    QRadialGradient white(disc.center(), pixels / 2.0);
    white.setColorAt(0, Qt::white);
    white.setColorAt(1, QColor(255, 255, 255, 0));

    QPainter painter(&wheel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(hues);
    painter.drawEllipse(disc);
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    painter.setBrush(white);
    painter.drawEllipse(disc);
    return wheel;
}

} // namespace quillbay
