#include "ui/PictureFrameNode.h"

#include "ui/PictureNode.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <utility>

namespace quillbay {

PictureFrameNode::PictureFrameNode(QQuickWindow *window)
    : m_window(window)
{
    for (std::unique_ptr<QSGImageNode> &part : m_parts) {
        part.reset(window->createImageNode());
        part->setFlag(OwnedByParent, false);
        part->setFiltering(QSGTexture::Linear);
        appendChildNode(part.get());
    }
}

PictureFrameNode::~PictureFrameNode()
{
    removeAllChildNodes();
}

void PictureFrameNode::show(const QImage &image, const QRectF &rect, const QRectF &hole)
{
    std::shared_ptr<QSGTexture> texture = sharedTexture(m_window, image);
    const std::array<QRectF, 4> places{
        QRectF(rect.topLeft(), QPointF(rect.right(), hole.top())),
        QRectF(QPointF(rect.left(), hole.bottom()), rect.bottomRight()),
        QRectF(QPointF(rect.left(), hole.top()), hole.bottomLeft()),
        QRectF(hole.topRight(), QPointF(rect.right(), hole.bottom())),
    };
    const qreal across = image.width() / rect.width();
    const qreal down = image.height() / rect.height();
    for (size_t i = 0; i < places.size(); ++i) {
        const QRectF &place = places[i];
        m_parts[i]->setTexture(texture.get());
        m_parts[i]->setRect(place);
        m_parts[i]->setSourceRect(QRectF((place.x() - rect.x()) * across, (place.y() - rect.y()) * down,
                                         place.width() * across, place.height() * down));
    }
    m_texture = std::move(texture);
}

} // namespace quillbay
