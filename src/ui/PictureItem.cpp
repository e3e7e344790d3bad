#include "ui/PictureItem.h"

#include "ui/PictureNode.h"

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
    Q_EMIT pictureChanged();
    update();
}

QSGNode *PictureItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (m_image.isNull() || width() <= 0 || height() <= 0) {
        delete node;
        return nullptr;
    }
    auto *picture = node ? static_cast<PictureNode *>(node) : new PictureNode(window());
    picture->show(m_image, QRectF(QPointF(), size()));
    return picture;
}

} // namespace quillbay
