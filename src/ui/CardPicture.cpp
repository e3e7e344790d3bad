#include "ui/CardPicture.h"

#include "ui/Artwork.h"
#include "ui/vocabulary/Theme.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace quillbay {

namespace {

constexpr qreal cornerRadius = 32;
constexpr QRectF face(0, 0, cardWidth, cardHeight);

QColor white(qreal opacity)
{
    return QColor::fromRgbF(1, 1, 1, float(opacity));
}

QColor black(qreal opacity)
{
    return QColor::fromRgbF(0, 0, 0, float(opacity));
}

/// From the top left corner to the bottom right one.
QLinearGradient diagonal(const QGradientStops &stops)
{
    QLinearGradient gradient(face.topLeft(), face.bottomRight());
    gradient.setStops(stops);
    return gradient;
}

qreal shadowBlur(bool dark)
{
    return dark ? 20 : 12;
}

struct Shine
{
    qreal blur;
    qreal offset;
    QColor color;
};

Shine shadowOf(bool dark)
{
    return {shadowBlur(dark), qreal(cardDrop(dark)), black(dark ? 0.4 : 0.1)};
}

QPainterPath outline()
{
    QPainterPath shape;
    shape.addRoundedRect(face, cornerRadius, cornerRadius);
    return shape;
}

/// Around the card only: what is translucent would show it through.
void paintShine(QPainter &painter, const Shine &shine)
{
    const QImage shadow =
        Artwork().shadow(cardWidth, cardHeight, cornerRadius, shine.blur, shine.color).value<QImage>();
    const qreal reach = 3 * shine.blur;
    painter.drawImage(face.adjusted(-reach, -reach, reach, reach).translated(0, shine.offset), shadow);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outline(), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

QImage canvas(int reach, qreal ratio)
{
    QImage image((QSizeF(cardWidth + 2 * reach, cardHeight + 2 * reach) * ratio).toSize(),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// With the card's top left corner as its origin.
void prepare(QPainter &painter, const QImage &image, int reach)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(image.width() / (cardWidth + 2.0 * reach), image.height() / (cardHeight + 2.0 * reach));
    painter.translate(reach, reach);
}

void paintBacking(QPainter &painter, const QPainterPath &shape, const CardPicture &card)
{
    if (card.dark) {
        painter.fillPath(shape, black(0.45));
    } else {
        painter.fillPath(shape, Theme::material(QStringLiteral("thin"), false, false));
        painter.fillPath(shape, Theme::fade(card.windowBackground, 0.6));
    }
    painter.fillPath(shape,
                     diagonal({{0, white(card.dark ? 0.08 : 0.35)}, {1, white(card.dark ? 0.02 : 0.1)}}));
}

QPen border(const CardPicture &card)
{
    if (card.dashed) {
        constexpr qreal width = 1.5;
        QPen pen(card.dark ? white(0.2) : black(0.15), width);
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({4 / width, 6 / width});
        return pen;
    }
    const QColor light = white(card.dark ? 0.15 : 0.6);
    const QColor shade = card.dark ? white(0.1) : black(0.08);
    return QPen(diagonal({{0, light}, {0.5, Qt::transparent}, {1, shade}}), 1);
}

} // namespace

int cardReach(bool dark)
{
    // Beyond these deviations less is left of it than one level of grey.
    return int(std::ceil((dark ? 2.6 : 2.1) * shadowBlur(dark)));
}

int cardDrop(bool dark)
{
    return dark ? 10 : 6;
}

QImage paintCard(const CardPicture &card)
{
    const int reach = cardReach(card.dark);
    QImage image = canvas(reach, card.ratio);
    QPainter painter(&image);
    prepare(painter, image, reach);
    painter.translate(0, -cardDrop(card.dark));
    if (!card.dashed)
        paintShine(painter, shadowOf(card.dark));
    paintBacking(painter, outline(), card);
    const QPen pen = border(card);
    const qreal inset = pen.widthF() / 2;
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(face.adjusted(inset, inset, -inset, -inset), cornerRadius - inset,
                            cornerRadius - inset);
    return image;
}

QImage paintGlow(const QColor &color, qreal ratio)
{
    QImage image = canvas(glowReach, ratio);
    QPainter painter(&image);
    prepare(painter, image, glowReach);
    paintShine(painter, {glowReach / 3.0, 0, color});
    return image;
}

} // namespace quillbay
