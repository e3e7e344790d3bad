#include "ui/Artwork.h"

#include "ui/vocabulary/Symbols.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace quillbay {

namespace {

QImage canvas(qreal width, qreal height, qreal ratio)
{
    QImage image(int(std::ceil(width * ratio)), int(std::ceil(height * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

QImage canvas(qreal edge, qreal ratio)
{
    return canvas(edge, edge, ratio);
}

QLinearGradient diagonal(const QRectF &rect, const QColor &from, const QColor &to)
{
    QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    return gradient;
}

QColor faded(QColor color, qreal opacity)
{
    color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

/// One premultiplied colour on another.
QRgb over(QRgb above, QRgb below)
{
    const int rest = 255 - qAlpha(above);
    const auto mixed = [rest](int top, int bottom) { return top + (bottom * rest + 127) / 255; };
    return qRgba(mixed(qRed(above), qRed(below)), mixed(qGreen(above), qGreen(below)),
                 mixed(qBlue(above), qBlue(below)), mixed(qAlpha(above), qAlpha(below)));
}

/// How far a point lies outside a rounded rectangle around the origin; negative inside.
qreal distanceToRoundedRect(QPointF point, QSizeF size, qreal radius)
{
    const qreal x = std::abs(point.x()) - size.width() / 2 + radius;
    const qreal y = std::abs(point.y()) - size.height() / 2 + radius;
    return std::min(std::max(x, y), 0.0) + std::hypot(std::max(x, 0.0), std::max(y, 0.0)) - radius;
}

/// How much of a shadow's colour lies that many standard deviations outside the edge.
qreal shadowStrength(qreal deviations)
{
    return 0.5 * std::erfc(deviations / M_SQRT2);
}

/// Pictures leave at ratio 1: the item that shows them has its own size.
QImage finished(QImage image)
{
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

QVariant Artwork::plate(qreal edge, qreal radius, const QColor &primary, qreal ratio) const
{
    QImage image = canvas(edge, ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF line(0.5, 0.5, edge - 1, edge - 1);
    painter.setPen(QPen(faded(primary, 0.1), 1));
    painter.setBrush(diagonal(QRectF(0, 0, edge, edge), faded(primary, 0.08), faded(primary, 0.04)));
    painter.drawRoundedRect(line, radius - 0.5, radius - 0.5);
    painter.end();
    return finished(image);
}

QVariant Artwork::panel(qreal width, qreal height, qreal radius, const QColor &color, const QColor &stroke,
                        qreal ratio) const
{
    QImage image = canvas(width, height, ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0, 0, width, height), radius, radius);
    if (stroke.alpha() > 0) {
        painter.setPen(QPen(stroke, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(0.5, 0.5, width - 1, height - 1), radius - 0.5, radius - 0.5);
    }
    painter.end();
    return finished(image);
}

QVariant Artwork::shadow(qreal width, qreal height, qreal radius, qreal blur, const QColor &color,
                         const QColor &ground) const
{
    if (width <= 0 || height <= 0 || blur <= 0)
        return {};
    constexpr qreal pixelsPerDeviation = 2; // below this it shows steps when it is scaled up
    const qreal ratio = std::min(1.0, pixelsPerDeviation / blur);
    const qreal reach = shadowReach(blur, color);
    QImage image = canvas(width + 2 * reach, height + 2 * reach, ratio);
    const QPointF centre(image.width() / ratio / 2, image.height() / ratio / 2);
    const QRgb below = qPremultiply(ground.rgba());
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QPointF point = QPointF(x + 0.5, y + 0.5) / ratio - centre;
            const qreal distance = distanceToRoundedRect(point, {width, height}, radius);
            const QRgb above = qPremultiply(faded(color, shadowStrength(distance / blur)).rgba());
            line[x] = over(above, below);
        }
    }
    return finished(image);
}

qreal Artwork::shadowReach(qreal blur, const QColor &color) const
{
    constexpr qreal unseen = 0.5 / 255;
    constexpr qreal step = 0.1;
    qreal deviations = 0;
    while (color.alphaF() * shadowStrength(deviations) > unseen)
        deviations += step;
    return std::ceil(deviations * blur);
}

QVariant Artwork::card(bool dark, const QColor &windowBackground, bool dashed, qreal ratio)
{
    const CardPicture look{dark, windowBackground, dashed, ratio};
    for (const KeptCard &kept : std::as_const(m_cards)) {
        if (kept.look == look)
            return kept.picture;
    }
    constexpr int mostLooks = 4; // both kinds of card, on two screens
    if (m_cards.size() == mostLooks)
        m_cards.removeFirst();
    m_cards.append({look, paintCard(look)});
    return m_cards.last().picture;
}

QVariant Artwork::ring(qreal edge, qreal stroke, const QColor &from, const QColor &to, qreal ratio) const
{
    return arc(edge, stroke, 360, from, to, ratio);
}

QVariant Artwork::arc(qreal edge, qreal stroke, qreal degrees, const QColor &from, const QColor &to,
                      qreal ratio) const
{
    QImage image = canvas(edge, ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF whole(0, 0, edge, edge);
    painter.setPen(QPen(diagonal(whole, from, to), stroke, Qt::SolidLine, Qt::RoundCap));
    const qreal inset = stroke / 2;
    const QRectF line = whole.adjusted(inset, inset, -inset, -inset);
    if (degrees >= 360)
        painter.drawEllipse(line);
    else
        painter.drawArc(line, 90 * 16, -int(std::lround(degrees * 16)));
    painter.end();
    return finished(image);
}

QVariant Artwork::glow(qreal edge, const QColor &color, qreal ratio) const
{
    QImage image = canvas(edge, ratio);
    QPainter painter(&image);
    QRadialGradient gradient(QPointF(edge / 2, edge / 2), edge / 2);
    gradient.setColorAt(0, color);
    gradient.setColorAt(1, faded(color, 0));
    painter.fillRect(QRectF(0, 0, edge, edge), gradient);
    painter.end();
    return finished(image);
}

QVariant Artwork::symbol(const QString &name, qreal size, qreal edge, const QColor &from, const QColor &to,
                         qreal ratio) const
{
    QImage image = canvas(edge, ratio);
    QPainterPath path;
    path.addText(0, 0, Symbols::font(name, size, QFont::Normal), Symbols::text(name));
    const QRectF bounds = path.boundingRect();
    path.translate(QPointF(edge / 2, edge / 2) - bounds.center());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, diagonal(path.boundingRect(), from, to));
    painter.end();
    return finished(image);
}

QVariant Artwork::glowingDisc(qreal edge, qreal disc, qreal glow, const QColor &from, const QColor &to,
                              const QColor &glowColor, qreal ratio) const
{
    QImage image = canvas(edge, ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre(edge / 2, edge / 2);
    // The blurred edge of a disc that is wide against its blur follows the error function of the distance to
    // the edge.
    QRadialGradient halo(centre, edge / 2);
    constexpr int stops = 24;
    for (int i = 0; i <= stops; ++i) {
        const qreal distance = edge / 2 * i / stops - disc / 2;
        halo.setColorAt(qreal(i) / stops, faded(glowColor, 0.5 * std::erfc(distance / (glow * M_SQRT2))));
    }
    painter.setBrush(halo);
    painter.drawRect(QRectF(0, 0, edge, edge));
    const QRectF round(centre.x() - disc / 2, centre.y() - disc / 2, disc, disc);
    painter.setBrush(diagonal(round, from, to));
    painter.drawEllipse(round);
    painter.end();
    return finished(image);
}

} // namespace quillbay
