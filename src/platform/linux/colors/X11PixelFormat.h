#pragma once

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <optional>

struct xcb_connection_t;

namespace quillbay::platform {

/// How pixels of the root window lie in the image data of the X protocol ("ZPixmap").
struct X11PixelFormat
{
    /// The three channels of a pixel, 0 to 1.
    struct Channels
    {
        double red;
        double green;
        double blue;
    };

    std::uint32_t redMask = 0xff0000;
    std::uint32_t greenMask = 0x00ff00;
    std::uint32_t blueMask = 0x0000ff;
    int bytesPerPixel = 4; ///< 2 to 4.
    int scanlinePad = 32;  ///< A line's length is a multiple of so many bits.
    bool bigEndian = false;

    /// Of the server's first screen; nothing where its colours come from a palette.
    static std::optional<X11PixelFormat> ofRoot(xcb_connection_t *connection);

    /// Bytes of one line.
    std::size_t stride(int width) const;
    /// The pixel number `x` of a line.
    std::uint32_t pixel(const std::uint8_t *line, int x) const;
    Channels channels(std::uint32_t pixel) const;

    /// Opaque, 8 bits a channel by truncation.
    QRgb color(std::uint32_t pixel) const;
    /// A picture as data for the server; its alpha is left out.
    QByteArray fromImage(const QImage &picture) const;
};

} // namespace quillbay::platform
