#include "ui/DragSource.h"

#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QPixmap>
#include <QPointer>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>

namespace quillbay {

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
    picture.setDevicePixelRatio(ratio);
    auto *drag = new QDrag(&window); // deletes itself
    drag->setMimeData(data);
    drag->setPixmap(QPixmap::fromImage(picture));
    drag->setHotSpot(hotSpot.toPoint());
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
