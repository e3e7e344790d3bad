#include "ui/PictureItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace quillbay {

PictureItem::PictureItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PictureItem::setPicture(const QVariant &picture)
{
    const QImage image = picture.value<QImage>();
    if (image.cacheKey() == m_image.cacheKey())
        return;
    m_image = image;
    m_textureIsOld = true;
    Q_EMIT pictureChanged();
    update();
}

QSGNode *PictureItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *picture = static_cast<QSGImageNode *>(node);
    if (m_image.isNull() || width() <= 0 || height() <= 0) {
        delete picture;
        m_textureIsOld = true;
        return nullptr;
    }
    if (!picture) {
        picture = window()->createImageNode();
        picture->setOwnsTexture(true);
        m_textureIsOld = true;
    }
    if (m_textureIsOld) {
        picture->setTexture(window()->createTextureFromImage(m_image, QQuickWindow::TextureCanUseAtlas));
        m_textureIsOld = false;
    }
    picture->setFiltering(QSGTexture::Linear);
    picture->setSourceRect(QRectF(QPointF(), QSizeF(m_image.size())));
    picture->setRect(boundingRect());
    return picture;
}

} // namespace quillbay
