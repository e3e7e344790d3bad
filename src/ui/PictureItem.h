#pragma once

#include <QImage>
#include <QQuickItem>

namespace quillbay {

/// Shows one picture, stretched over the item. For pictures that the program paints itself: they need no
/// provider, no URL and no cache. Works with every scene graph backend. Thread: main thread.
class PictureItem : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    QML_ELEMENT

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    QImage image() const { return m_image; }
    void setImage(const QImage &image);

Q_SIGNALS:
    void imageChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QImage m_image;
    bool m_textureIsOld = false;
};

} // namespace quillbay
