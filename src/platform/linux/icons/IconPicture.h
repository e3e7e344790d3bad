#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace quillbay::platform {

/// Reads a picture file as an icon of `edge` by `edge` pixels, premultiplied ARGB: drawings rendered at that
/// size, a picture of that size as it is, all others scaled once; the aspect is kept and the rest
/// transparent.
///
/// Null for anything but a regular file of up to 16 MiB that holds a PNG, SVG, XPM, ICO, ICNS, JPEG, WebP,
/// GIF or BMP picture of up to 4096 pixels in either direction that is not fully transparent. Thread: any.
QImage readIconPicture(const QString &path, int edge);

/// The same for the content of a file.
QImage decodeIconPicture(const QByteArray &data, int edge);

} // namespace quillbay::platform
