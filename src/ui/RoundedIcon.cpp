#include "ui/RoundedIcon.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace quillbay {

namespace {

void turnGrey(QImage &image, qreal part)
{
    const auto mixed = [part](int component, int grey) {
        return component + int(std::lround((grey - component) * part));
    };
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = line[x];
            const int grey = qGray(pixel);
            line[x] = qRgba(mixed(qRed(pixel), grey), mixed(qGreen(pixel), grey), mixed(qBlue(pixel), grey),
                            qAlpha(pixel));
        }
    }
}

} // namespace

QImage roundedPicture(const QImage &picture, qreal radius)
{
    QImage result(picture.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    painter.drawRoundedRect(result.rect(), radius, radius);
    painter.end();
    return result;
}

RoundedIcon::RoundedIcon(QQuickItem *parent)
    : PictureItem(parent)
{
    connect(&m_loader, &AppIconLoader::iconChanged, this, &RoundedIcon::paint);
}

void RoundedIcon::setPath(const QString &path)
{
    if (path == m_loader.path())
        return;
    m_loader.setPath(path);
    Q_EMIT pathChanged();
}

void RoundedIcon::setRadius(qreal radius)
{
    if (radius == m_radius)
        return;
    m_radius = radius;
    Q_EMIT lookChanged();
    paint();
}

void RoundedIcon::setGrey(qreal grey)
{
    if (grey == m_grey)
        return;
    m_grey = grey;
    Q_EMIT lookChanged();
    paint();
}

void RoundedIcon::paint()
{
    const QImage icon = m_loader.icon();
    if (icon.isNull() || width() <= 0)
        return;
    QImage picture = roundedPicture(icon, m_radius * icon.width() / width());
    if (m_grey > 0)
        turnGrey(picture, m_grey);
    setPicture(picture);
}

void RoundedIcon::updatePixelSize()
{
    if (window() && isComponentComplete())
        m_loader.setPixelSize(int(std::lround(width() * window()->effectiveDevicePixelRatio())));
}

void RoundedIcon::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    PictureItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        updatePixelSize();
}

void RoundedIcon::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        updatePixelSize();
    PictureItem::itemChange(change, value);
}

void RoundedIcon::componentComplete()
{
    PictureItem::componentComplete();
    updatePixelSize();
}

} // namespace quillbay
