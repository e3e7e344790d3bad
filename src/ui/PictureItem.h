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
    QML_ELEMENT

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    QVariant picture() const { return m_image; }
    void setPicture(const QVariant &picture);

Q_SIGNALS:
    void pictureChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QImage m_image;
};

} // namespace quillbay
