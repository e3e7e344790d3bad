#include "ui/PictureItem.h"

#include "ui/PictureFrameNode.h"
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

void PictureItem::setHole(const QRectF &hole)
{
    if (hole == m_hole)
        return;
    m_hole = hole;
    Q_EMIT holeChanged();
    update();
}

QSGNode *PictureItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (m_image.isNull() || width() <= 0 || height() <= 0) {
        delete node;
        return nullptr;
    }
    const bool isFrame = !m_hole.isEmpty();
    if (isFrame != m_isFrame) {
        delete node;
        node = nullptr;
        m_isFrame = isFrame;
    }
    const QRectF rect(QPointF(), size());
    if (isFrame) {
        auto *frame = node ? static_cast<PictureFrameNode *>(node) : new PictureFrameNode(window());
        frame->show(m_image, rect, m_hole);
        return frame;
    }
    auto *picture = node ? static_cast<PictureNode *>(node) : new PictureNode(window());
    picture->show(m_image, rect);
    return picture;
}

} // namespace quillbay
