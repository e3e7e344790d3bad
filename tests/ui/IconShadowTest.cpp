#include "ui/IconShadow.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

QImage disc(int edge)
{
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::red);
    painter.drawEllipse(0, 0, edge, edge);
    return image;
}

/// Alpha, 0 to 1, at a point given in units of the icon's edge from its top left.
qreal alphaAt(const IconShadow &shadow, qreal x, qreal y)
{
    const QPointF relative((x - shadow.rect.x()) / shadow.rect.width(),
                           (y - shadow.rect.y()) / shadow.rect.height());
    return shadow.image
        .pixelColor(int(relative.x() * shadow.image.width()), int(relative.y() * shadow.image.height()))
        .alphaF();
}

} // namespace

TEST(IconShadow, IsBlackDarkestUnderTheShapeAndGoneAtItsEdge)
{
    for (const qreal radius : {4.0, 12.0}) {
        const IconShadow shadow = iconShadow(disc(80), 80, radius, 0, 0.2);
        EXPECT_NEAR(alphaAt(shadow, 0.5, 0.5), 0.2, 0.03) << radius;
        EXPECT_NEAR(alphaAt(shadow, 0.5, 0.0), 0.1, 0.04) << radius << ": half at the shape's edge";
        EXPECT_LT(shadow.image.pixelColor(0, 0).alpha(), 2);
        EXPECT_EQ(shadow.image.pixelColor(shadow.image.width() / 2, shadow.image.height() / 2).red(), 0);
    }
}

TEST(IconShadow, FallsOffAsFarAsTheRadiusSays)
{
    const IconShadow narrow = iconShadow(disc(80), 80, 4, 0, 0.2);
    const IconShadow wide = iconShadow(disc(80), 80, 12, 0, 0.2);
    const qreal outside = -8.0 / 80;
    EXPECT_LT(alphaAt(narrow, 0.5, outside), 0.02);
    EXPECT_GT(alphaAt(wide, 0.5, outside), 0.02);
}

TEST(IconShadow, LiesBelowTheIconByTheOffset)
{
    const IconShadow shadow = iconShadow(disc(80), 80, 4, 8, 0.2);
    EXPECT_NEAR(shadow.rect.center().y(), 0.5 + 8.0 / 80, 0.001);
    EXPECT_NEAR(shadow.rect.center().x(), 0.5, 0.001);
    EXPECT_TRUE(iconShadow(QImage(), 80, 4, 2, 0.1).image.isNull());
}
