#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

namespace quillbay::platform {

/// The magnified surroundings of the pointer while a colour is picked: a grid of the pixels, each a square,
/// the middle one framed, and its value in hexadecimal below.
///
/// All lengths are device pixels. `ratio` is that of the screen: everything grows with it, but a square is
/// always a whole number of pixels, so that the grid is sharp.
class Loupe
{
public:
    /// Pixels on show in either direction, and those on each side of the middle one.
    static constexpr int pixels = 15;
    static constexpr int reach = pixels / 2;

    explicit Loupe(qreal ratio);

    QSize size() const;
    /// Where the pixel (`x`, `y`) of the grid is in the picture; (reach, reach) is the middle one.
    QRect cell(int x, int y) const;

    /// `surroundings` is `pixels` square. Fully transparent pixels lie outside the screen.
    QImage picture(const QImage &surroundings, const QString &hex) const;

    /// The top left corner beside `pointer`, within `screen`, so that the loupe covers none of the
    /// pixels on show: below and to the right where there is room.
    QPoint place(QPoint pointer, const QRect &screen) const;

private:
    int scaled(int length) const { return qRound(length * m_ratio); }
    QRect label() const;

    qreal m_ratio;
    int m_cell;
    int m_frame;
};

} // namespace quillbay::platform
