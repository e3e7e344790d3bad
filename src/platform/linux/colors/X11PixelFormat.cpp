#include "platform/linux/colors/X11PixelFormat.h"

#include <bit>

#include <xcb/xcb.h>

namespace quillbay::platform {

namespace {

double channel(std::uint32_t pixel, std::uint32_t mask)
{
    return mask ? double(pixel & mask) / mask : 0;
}

std::uint32_t spread(int value, std::uint32_t mask)
{
    const int shift = std::countr_zero(mask);
    const std::uint64_t most = mask >> shift;
    // Upwards, since reading cuts off.
    return std::uint32_t((most * std::uint64_t(value) + 254) / 255) << shift;
}

const xcb_visualtype_t *rootVisual(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen.root_visual)
                return visual.data;
        }
    }
    return nullptr;
}

} // namespace

std::optional<X11PixelFormat> X11PixelFormat::ofRoot(xcb_connection_t *connection)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const xcb_screen_t *screen = xcb_setup_roots_iterator(setup).data;
    const xcb_visualtype_t *visual = rootVisual(*screen);
    if (!visual || visual->_class != XCB_VISUAL_CLASS_TRUE_COLOR)
        return std::nullopt;
    X11PixelFormat format;
    format.redMask = visual->red_mask;
    format.greenMask = visual->green_mask;
    format.blueMask = visual->blue_mask;
    format.bigEndian = setup->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    for (auto each = xcb_setup_pixmap_formats_iterator(setup); each.rem; xcb_format_next(&each)) {
        if (each.data->depth == screen->root_depth && each.data->bits_per_pixel >= 16) {
            format.bytesPerPixel = each.data->bits_per_pixel / 8;
            format.scanlinePad = each.data->scanline_pad;
            return format;
        }
    }
    return std::nullopt;
}

std::size_t X11PixelFormat::stride(int width) const
{
    const auto pad = std::size_t(scanlinePad);
    const std::size_t bits = std::size_t(width) * std::size_t(bytesPerPixel) * 8;
    return (bits + pad - 1) / pad * pad / 8;
}

std::uint32_t X11PixelFormat::pixel(const std::uint8_t *line, int x) const
{
    const std::uint8_t *bytes = line + std::ptrdiff_t(x) * bytesPerPixel;
    std::uint32_t value = 0;
    for (int i = 0; i < bytesPerPixel; ++i) {
        const int place = bigEndian ? bytesPerPixel - 1 - i : i;
        value |= std::uint32_t(bytes[i]) << (8 * place);
    }
    return value;
}

X11PixelFormat::Channels X11PixelFormat::channels(std::uint32_t pixel) const
{
    return {channel(pixel, redMask), channel(pixel, greenMask), channel(pixel, blueMask)};
}

QRgb X11PixelFormat::color(std::uint32_t pixel) const
{
    const Channels color = channels(pixel);
    return qRgb(int(color.red * 255), int(color.green * 255), int(color.blue * 255));
}

QByteArray X11PixelFormat::fromImage(const QImage &picture) const
{
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    const std::size_t lineLength = stride(source.width());
    QByteArray data(qsizetype(lineLength) * source.height(), '\0');
    for (int y = 0; y < source.height(); ++y) {
        const auto *in = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        auto *out = reinterpret_cast<std::uint8_t *>(data.data()) + std::size_t(y) * lineLength;
        for (int x = 0; x < source.width(); ++x) {
            const std::uint32_t value = spread(qRed(in[x]), redMask) | spread(qGreen(in[x]), greenMask) |
                                        spread(qBlue(in[x]), blueMask);
            for (int i = 0; i < bytesPerPixel; ++i) {
                const int place = bigEndian ? bytesPerPixel - 1 - i : i;
                *out++ = std::uint8_t(value >> (8 * place));
            }
        }
    }
    return data;
}

} // namespace quillbay::platform
