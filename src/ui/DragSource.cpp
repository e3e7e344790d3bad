#include "ui/DragSource.h"

#include "platform/WindowEffects.h"
#include "ui/vocabulary/Theme.h"

#include <QBitmap>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QPixmap>
#include <QPointer>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>

namespace quillbay {

namespace {

/// The picture on the window's background, where it shows anything at all. Without a compositor the desktop
/// knows no translucent windows, and whatever it takes for their background shines through.
QImage grounded(QImage picture)
{
    constexpr int leastAlpha = 24;
    picture.convertTo(QImage::Format_ARGB32_Premultiplied);
    const QRgb ground = Theme::instance()->windowBackground().rgb();
    for (int y = 0; y < picture.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        std::transform(line, line + picture.width(), line, [ground](QRgb pixel) {
            const int rest = 255 - qAlpha(pixel);
            if (qAlpha(pixel) < leastAlpha)
                return qRgba(0, 0, 0, 0);
            return qRgb(qRed(pixel) + qRed(ground) * rest / 255, qGreen(pixel) + qGreen(ground) * rest / 255,
                        qBlue(pixel) + qBlue(ground) * rest / 255);
        });
    }
    return picture;
}

/// The picture's window cut to what is opaque in it. The toolkit asks for that too, but before there is a
/// native window, and so in vain.
void cutToShape(const QImage &picture)
{
    const QSize size = picture.deviceIndependentSize().toSize();
    const QBitmap opaque =
        QBitmap::fromImage(picture.scaled(size).createAlphaMask(Qt::ThresholdDither | Qt::AvoidDither));
    for (QWindow *window : QGuiApplication::allWindows()) {
        if (qstrcmp(window->metaObject()->className(), "QShapedPixmapWindow") == 0)
            window->setMask(QRegion(opaque));
    }
}

} // namespace

void DragSource::dragUrl(QQuickItem *item, const QUrl &url, QPointF hotSpot)
{
    if (url.isEmpty())
        return;
    auto data = std::make_unique<QMimeData>();
    data->setUrls({url});
    drag(item, std::move(data), hotSpot);
}

void DragSource::dragText(QQuickItem *item, const QString &text, QPointF hotSpot)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    drag(item, std::move(data), hotSpot);
}

void DragSource::drag(QQuickItem *item, std::unique_ptr<QMimeData> data, QPointF hotSpot)
{
    if (!item || !item->window() || m_isActive)
        return;
    const QPointer<QQuickWindow> window = item->window();
    const qreal ratio = window->effectiveDevicePixelRatio();
    const QSharedPointer<QQuickItemGrabResult> grab =
        item->grabToImage((QSizeF(item->width(), item->height()) * ratio).toSize());
    if (!grab)
        return;
    setActive(true);
    QMimeData *carried = data.release();
    carried->setParent(this);
    // Queued: the drag runs an event loop, which must not stand on the grab's own event.
    connect(
        grab.data(), &QQuickItemGrabResult::ready, this,
        [this, grab, window, carried, hotSpot, ratio] {
            if (window && QGuiApplication::mouseButtons() & Qt::LeftButton)
                run(*window, carried, grab->image(), ratio, hotSpot);
            else
                delete carried;
            setActive(false);
        },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void DragSource::run(QQuickWindow &window, QMimeData *data, QImage picture, qreal ratio, QPointF hotSpot)
{
    if (QQuickItem *holder = window.mouseGrabberItem())
        holder->ungrabMouse();
    const bool isOpaque = !Theme::instance()->effects().canShowThrough();
    if (isOpaque || !data->hasUrls())
        picture = grounded(picture);
    picture.setDevicePixelRatio(ratio);
    auto *drag = new QDrag(&window); // deletes itself
    drag->setMimeData(data);
    drag->setPixmap(QPixmap::fromImage(picture));
    drag->setHotSpot(hotSpot.toPoint());
    if (isOpaque)
        QTimer::singleShot(0, drag, [picture] { cutToShape(picture); });
    drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
}

void DragSource::setActive(bool active)
{
    if (active == m_isActive)
        return;
    m_isActive = active;
    Q_EMIT activeChanged();
}

} // namespace quillbay
