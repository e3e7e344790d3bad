#include "ui/IconShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillbay {

namespace {

/// Pixels per standard deviation of the blur: below this a shadow shows no steps when it is scaled up
/// smoothly.
constexpr qreal resolution = 2.0;
/// How far a Gaussian is followed, in standard deviations, before it counts as nothing.
constexpr qreal reach = 3.0;

/// The half width of a box that, applied three times, comes close to a Gaussian of standard deviation
/// `sigma`.
int boxHalfWidth(qreal sigma)
{
    return std::max(1, int(std::lround((std::sqrt(4.0 * sigma * sigma + 1.0) - 1.0) / 2.0)));
}

void boxBlurLine(const uchar *in, uchar *out, int count, int stride, int half)
{
    const int window = 2 * half + 1;
    int sum = 0;
    for (int i = 0; i < std::min(half, count); ++i)
        sum += in[i * stride];
    for (int i = 0; i < count; ++i) {
        sum += i + half < count ? in[(i + half) * stride] : 0;
        out[i * stride] = uchar((sum + half) / window);
        sum -= i >= half ? in[(i - half) * stride] : 0;
    }
}

void blur(std::vector<uchar> &alpha, int edge, int half)
{
    std::vector<uchar> other(alpha.size());
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < edge; ++y)
            boxBlurLine(&alpha[size_t(y) * edge], &other[size_t(y) * edge], edge, 1, half);
        for (int x = 0; x < edge; ++x)
            boxBlurLine(&other[size_t(x)], &alpha[size_t(x)], edge, edge, half);
    }
}

} // namespace

IconShadow iconShadow(const QImage &picture, qreal edge, qreal radius, qreal offset, qreal opacity)
{
    if (picture.isNull() || edge <= 0 || radius <= 0)
        return {};
    const qreal scale = resolution / radius;
    const int inner = std::max(1, int(std::ceil(edge * scale)));
    const int margin = int(std::ceil(reach * resolution)) + 1;
    const int outer = inner + 2 * margin;

    QImage shape(outer, outer, QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    {
        QPainter painter(&shape);
        const QImage small = picture.scaled(inner, inner, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(margin, margin, small);
    }
    std::vector<uchar> alpha(size_t(outer) * outer);
    for (int y = 0; y < outer; ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(shape.constScanLine(y));
        std::transform(line, line + outer, &alpha[size_t(y) * outer],
                       [](QRgb pixel) { return uchar(qAlpha(pixel)); });
    }
    blur(alpha, outer, boxHalfWidth(resolution));
    for (int y = 0; y < outer; ++y) {
        auto *line = reinterpret_cast<QRgb *>(shape.scanLine(y));
        for (int x = 0; x < outer; ++x)
            line[x] = qRgba(0, 0, 0, int(std::lround(alpha[size_t(y) * outer + x] * opacity)));
    }
    const qreal pixel = 1.0 / inner;
    return {shape, QRectF(-margin * pixel, -margin * pixel + offset / edge, outer * pixel, outer * pixel)};
}

QImage onShadow(const QImage &picture, const IconShadow &shadow, const QMargins &room)
{
    QImage result(picture.size().grownBy(room), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(room.left(), room.top());
    const qreal edge = picture.width();
    painter.drawImage(QRectF(shadow.rect.topLeft() * edge, shadow.rect.size() * edge), shadow.image);
    painter.drawImage(0, 0, picture);
    return result;
}

} // namespace quillbay
