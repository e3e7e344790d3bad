#pragma once

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QString>
#include <QUrl>
#include <QtQmlIntegration>

#include <memory>

class QMimeData;
class QQuickItem;
class QQuickWindow;

namespace quillbay {

/// Starts drags of the desktop's own kind, so that what is dragged can also be dropped on other programs.
///
/// The picture under the pointer is that of the item. It takes a frame to draw; when the button has been
/// released by then there is no drag. The desktop may copy or link what it gets, never move it: an
/// application's entry stays where it is. The item loses the mouse, since the release never reaches it.
///
/// Thread: main thread. While a drag lasts, the event loop runs inside it.
class DragSource : public QObject
{
    Q_OBJECT
    /// From the start of a drag to its drop.
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    bool isActive() const { return m_isActive; }

    /// `hotSpot` is where the pointer holds the item, in the item's coordinates. An empty URL starts nothing.
    Q_INVOKABLE void dragUrl(QQuickItem *item, const QUrl &url, QPointF hotSpot);
    /// Plain text.
    Q_INVOKABLE void dragText(QQuickItem *item, const QString &text, QPointF hotSpot);

Q_SIGNALS:
    void activeChanged();

private:
    void drag(QQuickItem *item, std::unique_ptr<QMimeData> data, QPointF hotSpot);
    /// Takes the data.
    void run(QQuickWindow &window, QMimeData *data, QImage picture, qreal ratio, QPointF hotSpot);
    void setActive(bool active);

    bool m_isActive = false;
};

} // namespace quillbay
