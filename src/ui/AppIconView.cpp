#include "ui/AppIconView.h"

#include "ui/DevicePixelNode.h"

#include <QCache>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGNode>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillbay {

namespace {

struct ShadowLook
{
    qreal radius;
    qreal offset;
    qreal opacity;
};

constexpr ShadowLook resting{4, 2, 0.1};
constexpr ShadowLook lifted{12, 6, 0.2};

/// Shadows that every tile shows, by picture: scrolling and typing bring the same ones again and again.
constexpr int keptShadows = 256;

IconShadow restingShadow(const QImage &icon, qreal edge)
{
    thread_local QCache<std::pair<qint64, qreal>, IconShadow> cache(keptShadows);
    const std::pair key(icon.cacheKey(), edge);
    if (const IconShadow *kept = cache.object(key))
        return *kept;
    const IconShadow shadow = iconShadow(icon, edge, resting.radius, resting.offset, resting.opacity);
    cache.insert(key, new IconShadow(shadow));
    return shadow;
}

QSGImageNode *imageNode(QQuickWindow *window, const QImage &image)
{
    QSGImageNode *node = window->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas));
    node->setSourceRect(QRectF(QPointF(), QSizeF(image.size())));
    node->setFiltering(QSGTexture::Linear);
    return node;
}

} // namespace

/// Two shadows below the icon, each behind an opacity of its own. The lifted one exists once the pointer has
/// been there.
class AppIconView::Node : public DevicePixelNode
{
public:
    Node()
    {
        for (Shadow *shadow : {&m_resting, &m_lifted}) {
            shadow->node.setFlag(QSGNode::OwnedByParent, false);
            appendChildNode(&shadow->node);
        }
    }
    ~Node() override
    {
        removeAllChildNodes();
        delete m_icon;
    }

    void setIcon(QQuickWindow *window, const QImage &icon, qreal edge)
    {
        m_resting.clear();
        m_lifted.clear();
        if (m_icon) {
            removeChildNode(m_icon);
            delete m_icon;
        }
        m_icon = imageNode(window, icon);
        m_icon->setFlag(QSGNode::OwnedByParent, false);
        appendChildNode(m_icon);
        m_resting.show(window, restingShadow(icon, edge));
    }

    void setLift(QQuickWindow *window, const QImage &icon, qreal edge, qreal lift)
    {
        if (lift > 0 && !m_lifted.image)
            m_lifted.show(window, iconShadow(icon, edge, lifted.radius, lifted.offset, lifted.opacity));
        m_resting.node.setOpacity(1 - lift);
        m_lifted.node.setOpacity(lift);
    }

    /// `fits` says that the icon is as large as the item is in device pixels.
    void place(qreal edge, qreal devicePixelRatio, bool fits)
    {
        const QSizeF size = fits ? m_icon->sourceRect().size() / devicePixelRatio : QSizeF(edge, edge);
        const QRectF rect(QPointF(), size);
        m_icon->setRect(rect);
        m_resting.place(rect);
        m_lifted.place(rect);
        setAlignment(devicePixelRatio, fits);
    }

protected:
    void setExact(bool exact) override
    {
        const QSGTexture::Filtering filtering = exact ? QSGTexture::Nearest : QSGTexture::Linear;
        if (filtering != m_icon->filtering())
            m_icon->setFiltering(filtering);
    }

private:
    struct Shadow
    {
        QSGOpacityNode node;
        QSGImageNode *image = nullptr;
        QRectF relative;

        ~Shadow() { clear(); }
        void clear()
        {
            node.removeAllChildNodes();
            delete image;
            image = nullptr;
        }
        void show(QQuickWindow *window, const IconShadow &shadow)
        {
            if (shadow.image.isNull())
                return;
            image = imageNode(window, shadow.image);
            image->setFlag(QSGNode::OwnedByParent, false);
            node.appendChildNode(image);
            relative = shadow.rect;
        }
        void place(const QRectF &rect)
        {
            if (!image)
                return;
            image->setRect(QRectF(rect.x() + relative.x() * rect.width(),
                                  rect.y() + relative.y() * rect.height(), relative.width() * rect.width(),
                                  relative.height() * rect.height()));
        }
    };

    Shadow m_resting;
    Shadow m_lifted;
    QSGImageNode *m_icon = nullptr;
};

AppIconView::AppIconView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(&m_loader, &AppIconLoader::iconChanged, this, &AppIconView::takeIcon);
}

void AppIconView::setPath(const QString &path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_loader.setPath(path);
    Q_EMIT pathChanged();
}

void AppIconView::setLift(qreal lift)
{
    const qreal within = std::clamp(lift, 0.0, 1.0);
    if (qFuzzyCompare(1 + within, 1 + m_lift))
        return;
    m_lift = within;
    Q_EMIT liftChanged();
    update();
}

void AppIconView::takeIcon()
{
    m_icon = m_loader.icon();
    m_iconIsNew = true;
    update();
}

int AppIconView::pixelSize() const
{
    return int(std::lround(width() * window()->effectiveDevicePixelRatio()));
}

void AppIconView::updatePixelSize()
{
    if (window() && isComponentComplete())
        m_loader.setPixelSize(pixelSize());
}

void AppIconView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        updatePixelSize();
        update();
    }
}

void AppIconView::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        updatePixelSize();
        update();
    }
    QQuickItem::itemChange(change, value);
}

void AppIconView::componentComplete()
{
    QQuickItem::componentComplete();
    updatePixelSize();
}

QSGNode *AppIconView::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<Node *>(old);
    if (m_icon.isNull() || width() <= 0) {
        delete node;
        m_iconIsNew = true;
        return nullptr;
    }
    if (!node) {
        node = new Node;
        m_iconIsNew = true;
    }
    if (m_iconIsNew)
        node->setIcon(window(), m_icon, width());
    m_iconIsNew = false;
    node->setLift(window(), m_icon, width(), m_lift);
    node->place(width(), window()->effectiveDevicePixelRatio(), m_icon.width() == pixelSize());
    return node;
}

} // namespace quillbay
