#pragma once

#include <QImage>
#include <QMargins>
#include <QRectF>

namespace quillbay {

/// A soft black shadow in the shape of a picture, painted once and shown by as many frames as wanted.
struct IconShadow
{
    QImage
        image; ///< Premultiplied, at reduced resolution: blurred shapes hold no detail that would be missed.
    QRectF rect; ///< Where it lies relative to the picture, in units in which the picture is 1 by 1.
};

/// The shadow of `picture`: its shape blurred by a Gaussian of standard deviation `radius`, black at
/// `opacity`, moved down by `offset`. Radius and offset are in units in which the picture is `edge` wide.
/// Costs some tens of microseconds for an icon. A null picture gives a null shadow.
IconShadow iconShadow(const QImage &picture, qreal edge, qreal radius, qreal offset, qreal opacity);

/// The picture on its shadow, in one. `room`, in pixels, is added around the picture; what the shadow has
/// beyond it is cut off.
QImage onShadow(const QImage &picture, const IconShadow &shadow, const QMargins &room);

} // namespace quillbay
