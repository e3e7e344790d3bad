#pragma once

#include "library/AppIconLoader.h"
#include "ui/PictureItem.h"

#include <QImage>

namespace quillbay {

/// The picture with its corners cut to arcs of that radius, in its own pixels.
QImage roundedPicture(const QImage &picture, qreal radius);

/// The icon of an application, clipped to a rounded rectangle, without a shadow; can be painted in grey.
/// Square. Thread: main thread.
class RoundedIcon : public quillbay::PictureItem // in full, for the type's description
{
    Q_OBJECT
    /// The application's path.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Of the corners, in device-independent pixels.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY lookChanged)
    /// 0 is in colour, 1 without any.
    Q_PROPERTY(qreal grey READ grey WRITE setGrey NOTIFY lookChanged)
    QML_ELEMENT

public:
    explicit RoundedIcon(QQuickItem *parent = nullptr);

    QString path() const { return m_loader.path(); }
    void setPath(const QString &path);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    qreal grey() const { return m_grey; }
    void setGrey(qreal grey);

Q_SIGNALS:
    void pathChanged();
    void lookChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void componentComplete() override;

private:
    void updatePixelSize();
    void paint();

    AppIconLoader m_loader;
    qreal m_radius = 0;
    qreal m_grey = 0;
};

} // namespace quillbay
