#include "tools/QRCode.h"

#include <QPainter>
#include <QStringEncoder>
#include <qrencode.h>

#include <cstring>
#include <memory>

namespace quillbay {

namespace {

constexpr int scale = 12;
constexpr int margin = 4;         // modules
constexpr int version = 0;        // the smallest that holds the data
constexpr unsigned char dark = 1; // the lowest bit of a module

struct Freed
{
    void operator()(QRcode *code) const { QRcode_free(code); }
};

QImage white(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

/// Modules drawn `size` pixels wide in the middle of white.
QImage framed(const QImage &modules, int size, int side)
{
    QImage image = white(side);
    QPainter painter(&image);
    const int first = (side - size) / 2;
    painter.drawImage(QRect(first, first, size, size), modules);
    return image;
}

} // namespace

QRCode::QRCode(const QString &text)
{
    QStringEncoder encoder(QStringConverter::Utf8);
    const QByteArray bytes = encoder.encode(text);
    if (bytes.isEmpty() || encoder.hasError())
        return;
    const std::unique_ptr<QRcode, Freed> code(
        QRcode_encodeData(int(bytes.size()), reinterpret_cast<const unsigned char *>(bytes.constData()),
                          version, QR_ECLEVEL_Q));
    if (!code)
        return;
    m_modules = white(code->width);
    for (int y = 0; y < code->width; ++y) {
        for (int x = 0; x < code->width; ++x) {
            if (code->data[y * code->width + x] & dark)
                m_modules.setPixel(x, y, qRgb(0, 0, 0));
        }
    }
}

QImage QRCode::image() const
{
    if (isNull())
        return {};
    const int side = (width() + 2 * margin) * scale;
    QImage image(side, side, QImage::Format_Mono);
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    image.fill(0);
    for (int y = 0; y < width(); ++y) {
        const int top = (margin + y) * scale;
        for (int x = 0; x < width(); ++x) {
            if (m_modules.pixel(x, y) != qRgb(0, 0, 0))
                continue;
            for (int step = 0; step < scale; ++step)
                image.setPixel((margin + x) * scale + step, top, 1);
        }
        for (int line = 1; line < scale; ++line)
            std::memcpy(image.scanLine(top + line), image.constScanLine(top), size_t(image.bytesPerLine()));
    }
    return image;
}

QImage QRCode::preview(int side) const
{
    if (isNull() || side <= 0)
        return {};
    const int module = side / width();
    return framed(m_modules, module >= 2 ? module * width() : side, side);
}

} // namespace quillbay
