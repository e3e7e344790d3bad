#pragma once

#include <QImage>
#include <QQuickItem>
#include <QVariant>

namespace quillbay {

/// Shows one picture, stretched over the item. For pictures that the program paints itself: they need no
/// provider, no URL and no cache. All items of a window that show the same picture share its texture. Works
/// with every scene graph backend. Thread: main thread.
class PictureItem : public QQuickItem
{
    Q_OBJECT
    /// A QImage, typed as what QML knows.
    Q_PROPERTY(QVariant picture READ picture WRITE setPicture NOTIFY pictureChanged)
    /// Nothing is drawn there, in the item's coordinates: something opaque hides it. Must lie within the
    /// item.
    Q_PROPERTY(QRectF hole READ hole WRITE setHole NOTIFY holeChanged)
    QML_ELEMENT

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    QVariant picture() const { return m_image; }
    void setPicture(const QVariant &picture);

    QRectF hole() const { return m_hole; }
    void setHole(const QRectF &hole);

Q_SIGNALS:
    void pictureChanged();
    void holeChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QImage m_image;
    QRectF m_hole;
    bool m_isFrame = false; ///< What the node is.
};

} // namespace quillbay
