#pragma once

#include "ui/CardPicture.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QVariant>
#include <QtQmlIntegration>

namespace quillbay {

/// Small pictures with gradients that the scene graph has no item for, painted once at the device pixel ratio
/// they are shown at. Each is square unless told otherwise; pass it to a `PictureItem` of the given size.
///
/// Thread: main thread; each costs well under a millisecond.
class Artwork : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The plate behind a tile's icon: rounded square, diagonal gradient and hairline in shades of `primary`.
    Q_INVOKABLE QVariant plate(qreal edge, qreal radius, const QColor &primary, qreal ratio) const;
    /// A rounded plate of one colour with a hairline around it, inside its edges; a transparent one is none.
    Q_INVOKABLE QVariant panel(qreal width, qreal height, qreal radius, const QColor &color,
                               const QColor &stroke, qreal ratio) const;

    /// The soft shadow, or the glow, of a rounded rectangle of that size: `blur` is its standard deviation.
    /// `shadowReach` is added to the picture on every side. Painted at reduced resolution, so it needs no
    /// device pixel ratio. With a `ground` the whole picture is that colour below the shadow.
    Q_INVOKABLE QVariant shadow(qreal width, qreal height, qreal radius, qreal blur, const QColor &color,
                                const QColor &ground = Qt::transparent) const;
    /// How far such a shadow can be seen: beyond that it is less than half a step of the screen's colours.
    Q_INVOKABLE qreal shadowReach(qreal blur, const QColor &color) const;

    /// What a card stands on, the same picture for all cards of a look; `dashed` is the one that makes a
    /// folder. It reaches `cardReach` beyond the card on every side.
    Q_INVOKABLE QVariant card(bool dark, const QColor &windowBackground, bool dashed, qreal ratio);
    Q_INVOKABLE int cardReach(bool dark) const { return quillbay::cardReach(dark); }
    Q_INVOKABLE int cardDrop(bool dark) const { return quillbay::cardDrop(dark); }
    /// The glow around a card; it reaches `glowReach` beyond the card on every side.
    Q_INVOKABLE QVariant cardGlow(const QColor &color, qreal ratio) const { return paintGlow(color, ratio); }
    Q_INVOKABLE int glowReach() const { return quillbay::glowReach; }

    /// A full circle, stroked from `from` at the top left to `to` at the bottom right.
    Q_INVOKABLE QVariant ring(qreal edge, qreal stroke, const QColor &from, const QColor &to,
                              qreal ratio) const;
    /// A segment of a circle of `degrees`, with round ends.
    Q_INVOKABLE QVariant arc(qreal edge, qreal stroke, qreal degrees, const QColor &from, const QColor &to,
                             qreal ratio) const;
    /// A disc that is `color` in its middle and fades to nothing at its edge.
    Q_INVOKABLE QVariant glow(qreal edge, const QColor &color, qreal ratio) const;
    /// A symbol of that size in the middle of the picture, from `from` at its top left to `to` at its bottom
    /// right.
    Q_INVOKABLE QVariant symbol(const QString &name, qreal size, qreal edge, const QColor &from,
                                const QColor &to, qreal ratio) const;
    /// A filled disc of diameter `disc` with a glow of `glow` (standard deviation of its blur); `edge`
    /// includes the glow.
    Q_INVOKABLE QVariant glowingDisc(qreal edge, qreal disc, qreal glow, const QColor &from, const QColor &to,
                                     const QColor &glowColor, qreal ratio) const;

private:
    struct KeptCard
    {
        CardPicture look;
        QImage picture;
    };
    QList<KeptCard> m_cards; ///< Those of the last looks.
};

} // namespace quillbay
