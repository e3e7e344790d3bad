#include "platform/IconSource.h"
#include "support/TestHome.h"
#include "support/XServer.h"
#include "ui/AppIconView.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

#include <cmath>

#include <gtest/gtest.h>

namespace quillbay {
namespace {

bool isWhite(int x, int y)
{
    return (x + y) % 2 != 0;
}

/// Icons of alternating black and white pixels: whatever does not show them pixel by pixel gives grey ones.
class Checkers final : public platform::IconSource
{
public:
    QImage icon(const QString &, int edge) const override
    {
        QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < edge; ++y) {
            for (int x = 0; x < edge; ++x)
                image.setPixel(x, y, isWhite(x, y) ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        }
        return image;
    }
    QImage documentIcon(const QString &, int) const override { return {}; }
    QImage genericIcon(int edge) const override
    {
        QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::green);
        return image;
    }
};

/// How many pixels are not as the icon has them, with its top left at `corner`.
int wrongPixels(const QImage &picture, QPoint corner, int edge)
{
    int wrong = 0;
    for (int y = 0; y < edge; ++y) {
        for (int x = 0; x < edge; ++x)
            wrong += picture.pixelColor(corner + QPoint(x, y)) !=
                     (isWhite(x, y) ? QColor(Qt::white) : QColor(Qt::black));
    }
    return wrong;
}

/// Run with several scale factors: see CMakeLists.txt.
TEST(IconSharpness, EveryTexelIsOneDevicePixelWhereverTheTileLies)
{
    const Checkers source;
    AppIconLoader::setSource(&source);
    QQuickWindow window;
    window.setColor(Qt::red);
    window.resize(300, 300);
    QQuickItem scrolled(window.contentItem());
    AppIconView view(&scrolled);
    view.setSize({80, 80});
    view.setPath(QStringLiteral("/apps/one"));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const qreal ratio = window.effectiveDevicePixelRatio();
    const int edge = int(std::lround(80 * ratio));
    const auto middle = [&] {
        const QImage picture = window.grabWindow();
        return picture.pixelColor(QPointF(QPointF(40, 40) * ratio).toPoint());
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return middle() != Qt::green && middle() != Qt::red; }, 10000));

    for (const qreal at :
         {20.0, 21.0, 22.0, 23.0, 24.0, 20.25, 20.5, 20.75, 20 + 1 / 3.0, 20 + 0.5 / ratio, 20.4, 20.9}) {
        view.setPosition({5, at - 10});
        scrolled.setPosition({at, 10});
        const QImage picture = window.grabWindow();
        ASSERT_EQ(picture.size(), QSizeF(QSizeF(300, 300) * ratio).toSize());
        const QPointF exact = QPointF(at + 5, at) * ratio;
        int fewest = edge * edge;
        for (const int x : {int(std::floor(exact.x())), int(std::ceil(exact.x()))}) {
            for (const int y : {int(std::floor(exact.y())), int(std::ceil(exact.y()))})
                fewest = std::min(fewest, wrongPixels(picture, {x, y}, edge));
        }
        EXPECT_EQ(fewest, 0) << "at " << at << ", ratio " << ratio;
    }
    AppIconLoader::shutDown();
}

} // namespace
} // namespace quillbay

int main(int argc, char **argv)
{
    const quillbay::testing::TestHome home;
    const quillbay::testing::XServer server;
    qputenv("DISPLAY", server.display());
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
