#pragma once

#include <QColor>
#include <QImage>

namespace quillbay {

/// What a card of the grid stands on: shadow, translucent backing with its light, and border in one picture.
struct CardPicture
{
    bool dark = false;
    QColor windowBackground;
    /// The card that makes a folder: a dashed border and no shadow.
    bool dashed = false;
    qreal ratio = 1; ///< Device pixels per unit.

    friend bool operator==(const CardPicture &, const CardPicture &) = default;
};

constexpr int cardWidth = 260;
constexpr int cardHeight = 190;

/// The picture is so much larger than the card on every side, and lies so much lower than it: where the
/// shadow is to be seen.
int cardReach(bool dark);
int cardDrop(bool dark);

/// Premultiplied, at device pixel ratio 1. Costs some milliseconds; meant to be shared by all cards.
QImage paintCard(const CardPicture &card);

/// How far the glow reaches beyond the card, the same on every side.
constexpr int glowReach = 45;
/// What shines around the card that would take what is dragged. Nothing of it lies behind the card, which is
/// translucent.
QImage paintGlow(const QColor &color, qreal ratio);

} // namespace quillbay
