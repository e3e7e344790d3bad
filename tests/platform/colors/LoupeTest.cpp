#include "platform/linux/colors/Loupe.h"

#include "platform/linux/colors/X11PixelFormat.h"

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

/// Each pixel another colour.
QImage surroundings()
{
    QImage image(Loupe::pixels, Loupe::pixels, QImage::Format_ARGB32);
    for (int y = 0; y < Loupe::pixels; ++y) {
        for (int x = 0; x < Loupe::pixels; ++x)
            image.setPixel(x, y, qRgb(x * 16, y * 16, 200));
    }
    return image;
}

TEST(LoupeTest, EachPixelIsASquareOfWholePixelsAtEveryRatio)
{
    for (const qreal ratio : {1.0, 1.25, 1.33, 2.0}) {
        SCOPED_TRACE(ratio);
        const Loupe loupe(ratio);
        QImage source = surroundings();
        source.setPixel(0, 3, 0);
        const QImage picture = loupe.picture(source, QStringLiteral("#7070C8"));
        ASSERT_EQ(picture.size(), loupe.size());
        for (int y = 0; y < Loupe::pixels; ++y) {
            for (int x = 0; x < Loupe::pixels; ++x) {
                const QRect cell = loupe.cell(x, y);
                // The middle of a square, free of the lines between them.
                if (x != 0 || y != 3) {
                    EXPECT_EQ(picture.pixelColor(cell.center()), source.pixelColor(x, y)) << x << ' ' << y;
                }
                if (x + 1 < Loupe::pixels) {
                    EXPECT_EQ(loupe.cell(x + 1, y).left(), cell.left() + cell.width());
                }
            }
        }
        EXPECT_NE(picture.pixelColor(loupe.cell(0, 3).center()), QColor(Qt::black)) << "beyond the screen";
        const QRect middle = loupe.cell(Loupe::reach, Loupe::reach);
        EXPECT_EQ(picture.pixelColor(middle.left(), middle.center().y()), QColor(Qt::white)) << "its frame";
    }
}

TEST(LoupeTest, KeepsOnTheScreenAndOffWhatItShows)
{
    const QRect screens[] = {{0, 0, 1000, 800}, {1000, 100, 2560, 1440}};
    for (const QRect &screen : screens) {
        for (const qreal ratio : {1.0, 1.25, 2.0}) {
            const Loupe loupe(ratio);
            const QPoint corners[] = {screen.topLeft(), screen.topRight(), screen.bottomLeft(),
                                      screen.bottomRight(), screen.center()};
            for (const QPoint &pointer : corners) {
                const QRect place(loupe.place(pointer, screen), loupe.size());
                const QRect shown(pointer - QPoint(Loupe::reach, Loupe::reach),
                                  QSize(Loupe::pixels, Loupe::pixels));
                EXPECT_TRUE(screen.contains(place)) << ratio << " at " << pointer.x() << ',' << pointer.y();
                EXPECT_FALSE(place.intersects(shown)) << ratio << " at " << pointer.x() << ',' << pointer.y();
            }
        }
    }
}

TEST(X11PixelFormatTest, ReadsWhatItWritesInTheFormatsOfServers)
{
    const X11PixelFormat formats[] = {
        {},
        {0xff0000, 0x00ff00, 0x0000ff, 4, 32, true},
        {0x0000ff, 0x00ff00, 0xff0000, 3, 32, false},
        {0x3ff00000, 0x000ffc00, 0x000003ff, 4, 32, false},
    };
    QImage picture(3, 2, QImage::Format_RGB32);
    const QRgb colors[] = {qRgb(255, 255, 255), qRgb(18, 52, 86), qRgb(1, 2, 3),
                           qRgb(254, 0, 128),   qRgb(0, 0, 0),    qRgb(127, 200, 77)};
    for (int i = 0; i < 6; ++i)
        picture.setPixel(i % 3, i / 3, colors[i]);
    for (const X11PixelFormat &format : formats) {
        SCOPED_TRACE(::testing::Message() << format.bytesPerPixel << ' ' << format.redMask);
        const QByteArray data = format.fromImage(picture);
        ASSERT_EQ(data.size(), qsizetype(2 * format.stride(3)));
        for (int i = 0; i < 6; ++i) {
            const auto *line = reinterpret_cast<const std::uint8_t *>(data.constData()) +
                               format.stride(3) * std::size_t(i / 3);
            EXPECT_EQ(format.color(format.pixel(line, i % 3)), colors[i]) << i;
        }
    }
    EXPECT_EQ(X11PixelFormat({0xff0000, 0xff00, 0xff, 3, 32, false}).stride(3), 12U);
    const X11PixelFormat sixteen{0xf800, 0x07e0, 0x001f, 2, 32, false};
    EXPECT_EQ(sixteen.channels(0xffff).green, 1.0);
    EXPECT_EQ(sixteen.color(0xf800), qRgb(255, 0, 0));
}

} // namespace
} // namespace quillbay::platform
