#include "ui/PictureItem.h"

#include "ui/DevicePixelNode.h"

#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>
#include <memory>
#include <utility>

namespace quillbay {

namespace {

/// The textures that nodes show at the moment. Each render thread has its own.
std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow *window, const QImage &image)
{
    using Textures = QHash<std::pair<QQuickWindow *, qint64>, std::weak_ptr<QSGTexture>>;
    thread_local Textures textures;
    const std::pair key(window, image.cacheKey());
    if (std::shared_ptr<QSGTexture> known = textures.value(key).lock())
        return known;
    textures.removeIf([](const Textures::iterator entry) { return entry->expired(); });
    const std::shared_ptr<QSGTexture> made(
        window->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas));
    textures.insert(key, made);
    return made;
}

class Node : public DevicePixelNode
{
public:
    explicit Node(QQuickWindow *window)
        : m_image(window->createImageNode())
    {
        m_image->setFlag(QSGNode::OwnedByParent, false);
        appendChildNode(m_image.get());
    }
    ~Node() override { removeAllChildNodes(); }

    void show(QQuickWindow *window, const QImage &image, QSizeF size)
    {
        if (image.cacheKey() != m_key) {
            std::shared_ptr<QSGTexture> texture = sharedTexture(window, image);
            m_image->setTexture(texture.get());
            m_image->setSourceRect(QRectF(QPointF(), QSizeF(image.size())));
            m_texture = std::move(texture); // the old one is let go when nobody draws it any more
            m_key = image.cacheKey();
        }
        const qreal ratio = window->effectiveDevicePixelRatio();
        const QSizeF beyond = QSizeF(image.size()) - size * ratio;
        const bool fits = std::abs(beyond.width()) < 1 && std::abs(beyond.height()) < 1;
        m_image->setRect(QRectF(QPointF(), fits ? QSizeF(image.size()) / ratio : size));
        setAlignment(ratio, fits);
    }

protected:
    void setExact(bool exact) override
    {
        const QSGTexture::Filtering filtering = exact ? QSGTexture::Nearest : QSGTexture::Linear;
        if (filtering != m_image->filtering())
            m_image->setFiltering(filtering);
    }

private:
    std::shared_ptr<QSGTexture> m_texture;
    std::unique_ptr<QSGImageNode> m_image;
    qint64 m_key = 0;
};

} // namespace

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
    auto *picture = node ? static_cast<Node *>(node) : new Node(window());
    picture->show(window(), m_image, size());
    return picture;
}

} // namespace quillbay
