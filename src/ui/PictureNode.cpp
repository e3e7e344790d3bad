#include "ui/PictureNode.h"

#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>
#include <utility>

namespace quillbay {

std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow *window, const QImage &image)
{
    using Textures = QHash<std::pair<QQuickWindow *, qint64>, std::weak_ptr<QSGTexture>>;
    thread_local Textures textures;
    thread_local qsizetype mostTextures = 64;
    const std::pair key(window, image.cacheKey());
    if (std::shared_ptr<QSGTexture> known = textures.value(key).lock())
        return known;
    if (textures.size() >= mostTextures) {
        textures.removeIf([](const Textures::iterator entry) { return entry->expired(); });
        mostTextures = std::max<qsizetype>(64, 2 * textures.size());
    }
    const std::shared_ptr<QSGTexture> made(
        window->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas));
    textures.insert(key, made);
    return made;
}

PictureNode::PictureNode(QQuickWindow *window)
    : m_window(window)
    , m_image(window->createImageNode())
{
    m_image->setFlag(QSGNode::OwnedByParent, false);
    appendChildNode(m_image.get());
}

PictureNode::~PictureNode()
{
    removeAllChildNodes();
}

void PictureNode::show(const QImage &image, const QRectF &rect)
{
    if (image.cacheKey() != m_key) {
        std::shared_ptr<QSGTexture> texture = sharedTexture(m_window, image);
        m_image->setTexture(texture.get());
        m_image->setSourceRect(QRectF(QPointF(), QSizeF(image.size())));
        m_texture = std::move(texture); // the old one is let go when nobody draws it any more
        m_key = image.cacheKey();
    }
    const qreal ratio = m_window->effectiveDevicePixelRatio();
    const QSizeF beyond = QSizeF(image.size()) - rect.size() * ratio;
    const bool fits = std::abs(beyond.width()) < 1 && std::abs(beyond.height()) < 1;
    const QRectF shown(rect.topLeft(), fits ? QSizeF(image.size()) / ratio : rect.size());
    if (shown != m_image->rect())
        m_image->setRect(shown);
    setAlignment(ratio, fits);
}

void PictureNode::setExact(bool exact)
{
    const QSGTexture::Filtering filtering = exact ? QSGTexture::Nearest : QSGTexture::Linear;
    if (filtering != m_image->filtering())
        m_image->setFiltering(filtering);
}

} // namespace quillbay
