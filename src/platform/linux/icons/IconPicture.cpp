#include "platform/linux/icons/IconPicture.h"

#include "platform/linux/icons/IcnsPicture.h"
#include "platform/linux/icons/IconFile.h"
#include "platform/linux/icons/SafeSvg.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cstring>

namespace quillbay::platform {

namespace {

constexpr qint64 largestFile = 16 * 1024 * 1024;
constexpr int largestSide = 4096;
constexpr int mostPictures = 64;

bool isText(const QByteArray &data, char first)
{
    qsizetype i = data.startsWith("\xef\xbb\xbf") ? 3 : 0;
    while (i < data.size() && std::strchr(" \t\r\n", data[i]) && data[i] != '\0')
        ++i;
    return i < data.size() && data[i] == first;
}

QImage transparentSquare(int edge)
{
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The largest rectangle of the aspect of `size` in the middle of a square.
QRectF fitted(const QSizeF &size, int edge)
{
    const QSizeF scaled = size.scaled(edge, edge, Qt::KeepAspectRatio);
    return {QPointF((edge - scaled.width()) / 2, (edge - scaled.height()) / 2), scaled};
}

QImage renderSvg(const QByteArray &data, int edge)
{
    const QByteArray safe = safeSvg(data);
    if (safe.isEmpty())
        return {};
    QSvgRenderer renderer(safe);
    if (!renderer.isValid())
        return {};
    const QRectF box = renderer.viewBoxF();
    const QSizeF size = box.isEmpty() ? QSizeF(renderer.defaultSize()) : box.size();
    if (size.isEmpty())
        return {};
    QImage image = transparentSquare(edge);
    QPainter painter(&image);
    renderer.render(&painter, fitted(size, edge));
    return image;
}

bool isReadable(const QImageReader &reader)
{
    static const QList<QByteArray> formats = {"png", "xpm",  "ico", "cur", "jpeg",
                                              "jpg", "webp", "gif", "bmp"};
    const QSize size = reader.size();
    return formats.contains(reader.format()) && size.width() <= largestSide && size.height() <= largestSide;
}

/// The picture of a file that serves best: icon files hold one for each size.
QImage readRaster(const QByteArray &data, int edge)
{
    QBuffer buffer;
    buffer.setData(data);
    if (!buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const bool holdsSizes = reader.format() == "ico" || reader.format() == "cur";
    QImage best;
    for (int i = 0; i < mostPictures && isReadable(reader); ++i) {
        const QImage image = reader.read();
        if (image.isNull())
            break;
        const bool bothServe = image.width() >= edge && best.width() >= edge;
        if (best.isNull() || (bothServe ? image.width() < best.width() : image.width() > best.width()))
            best = image;
        if (!holdsSizes || !reader.jumpToNextImage())
            break;
    }
    return best.width() <= largestSide && best.height() <= largestSide ? best : QImage();
}

QImage fitPicture(const QImage &picture, int edge)
{
    QImage image = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(1);
    if (image.size() == QSize(edge, edge))
        return image;
    const QSize size = image.size().scaled(edge, edge, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (size != image.size())
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (size == QSize(edge, edge))
        return image;
    QImage square = transparentSquare(edge);
    QPainter painter(&square);
    painter.drawImage(QPoint((edge - size.width()) / 2, (edge - size.height()) / 2), image);
    return square;
}

bool showsSomething(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 0; }))
            return true;
    }
    return false;
}

} // namespace

QImage decodeIconPicture(const QByteArray &data, int edge)
{
    if (isIcns(data))
        return decodeIconPicture(bestIcnsPicture(data, edge), edge);
    QImage image;
    if (isText(data, '<')) {
        image = renderSvg(data, edge);
    } else if (const QImage picture = readRaster(data, edge); !picture.isNull()) {
        image = fitPicture(picture, edge);
    }
    return showsSomething(image) ? image : QImage();
}

QImage readIconPicture(const QString &path, int edge)
{
    const std::optional<QByteArray> data = readIconFile(path, largestFile);
    return data ? decodeIconPicture(*data, edge) : QImage();
}

} // namespace quillbay::platform
