#include "ui/AppIconView.h"

#include "ui/PictureNode.h"

#include <QCache>
#include <QQuickWindow>

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

/// How far the resting shadow is drawn, in its radii: beyond, less is left of it than one level of grey.
constexpr qreal restingReach = 2;

/// Icons on their resting shadows, by icon: scrolling and typing bring the same ones again and again.
constexpr int keptBytes = 12 << 20;

IconShadow shadowOf(const QImage &icon, qreal edge, const ShadowLook &look)
{
    return iconShadow(icon, edge, look.radius, look.offset, look.opacity);
}

/// Around the icon on its resting shadow, in its pixels.
QMargins room(const QImage &icon, qreal edge)
{
    const qreal ratio = icon.width() / edge;
    const auto pixels = [ratio](qreal length) { return int(std::ceil(length * ratio)); };
    const qreal reach = restingReach * resting.radius;
    return {pixels(reach), pixels(reach - resting.offset), pixels(reach), pixels(reach + resting.offset)};
}

QImage atRest(const QImage &icon, qreal edge)
{
    static QCache<std::pair<qint64, qreal>, QImage> cache(keptBytes);
    const std::pair key(icon.cacheKey(), edge);
    if (const QImage *kept = cache.object(key))
        return *kept;
    const QImage made = onShadow(icon, shadowOf(icon, edge, resting), room(icon, edge));
    cache.insert(key, new QImage(made), int(made.sizeInBytes()));
    return made;
}

/// A picture behind an opacity of its own.
class FadingPicture
{
public:
    explicit FadingPicture(QQuickWindow *window)
        : m_picture(window)
    {
        m_opacity.setFlag(QSGNode::OwnedByParent, false);
        m_picture.setFlag(QSGNode::OwnedByParent, false);
        m_opacity.appendChildNode(&m_picture);
    }
    ~FadingPicture() { m_opacity.removeAllChildNodes(); }
    FadingPicture(const FadingPicture &) = delete;
    FadingPicture &operator=(const FadingPicture &) = delete;

    QSGNode *node() { return &m_opacity; }

    void show(const IconShadow &shadow, qreal edge, qreal opacity)
    {
        m_opacity.setOpacity(opacity);
        m_picture.show(shadow.image, QRectF(shadow.rect.topLeft() * edge, shadow.rect.size() * edge));
    }

private:
    QSGOpacityNode m_opacity;
    PictureNode m_picture;
};

} // namespace

/// At rest one picture. While lifted the icon, below it its two shadows, which take each other's place.
class AppIconView::Node : public QSGNode
{
public:
    explicit Node(QQuickWindow *window)
        : m_window(window)
        , m_front(window)
    {
        m_front.setFlag(OwnedByParent, false);
        appendChildNode(&m_front);
    }
    ~Node() override { removeAllChildNodes(); }

    void show(const AppIconView &view)
    {
        const qreal edge = view.width();
        if (view.m_lift <= 0) {
            removeShadows();
            const QMarginsF around = room(view.m_icon, edge).toMarginsF() / (view.m_icon.width() / edge);
            m_front.show(view.m_atRest, QRectF(0, 0, edge, edge).marginsAdded(around));
            return;
        }
        const bool isNew = !m_shadows;
        if (isNew)
            m_shadows = std::make_unique<Shadows>(m_window);
        m_shadows->resting.show(view.m_shadows[0], edge, 1 - view.m_lift);
        m_shadows->lifted.show(view.m_shadows[1], edge, view.m_lift);
        if (isNew) { // not before they have a texture: the software renderer looks at it at once
            prependChildNode(m_shadows->lifted.node());
            prependChildNode(m_shadows->resting.node());
        }
        m_front.show(view.m_icon, QRectF(0, 0, edge, edge));
    }

private:
    struct Shadows
    {
        explicit Shadows(QQuickWindow *window)
            : resting(window)
            , lifted(window)
        {
        }
        FadingPicture resting;
        FadingPicture lifted;
    };

    void removeShadows()
    {
        if (!m_shadows)
            return;
        removeChildNode(m_shadows->resting.node());
        removeChildNode(m_shadows->lifted.node());
        m_shadows.reset();
    }

    QQuickWindow *m_window;
    PictureNode m_front;
    std::unique_ptr<Shadows> m_shadows;
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
    polish();
}

void AppIconView::takeIcon()
{
    m_icon = m_loader.icon();
    m_isNew = true;
    polish();
}

void AppIconView::updatePixelSize()
{
    if (window() && isComponentComplete())
        m_loader.setPixelSize(int(std::lround(width() * window()->effectiveDevicePixelRatio())));
}

void AppIconView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        updatePixelSize();
        m_isNew = true;
        polish();
    }
}

void AppIconView::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        updatePixelSize();
        m_isNew = true;
        polish();
    }
    QQuickItem::itemChange(change, value);
}

void AppIconView::componentComplete()
{
    QQuickItem::componentComplete();
    updatePixelSize();
}

void AppIconView::updatePolish()
{
    if (m_icon.isNull() || width() <= 0)
        return;
    if (std::exchange(m_isNew, false)) {
        m_atRest = atRest(m_icon, width());
        m_shadows = {};
    }
    if (m_lift > 0 && m_shadows[0].image.isNull())
        m_shadows = {shadowOf(m_icon, width(), resting), shadowOf(m_icon, width(), lifted)};
    update();
}

QSGNode *AppIconView::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    if (m_atRest.isNull()) {
        delete old;
        return nullptr;
    }
    auto *node = old ? static_cast<Node *>(old) : new Node(window());
    node->show(*this);
    return node;
}

} // namespace quillbay
