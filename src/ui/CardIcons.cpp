#include "ui/CardIcons.h"

#include "ui/IconShadow.h"
#include "ui/PictureNode.h"
#include "ui/RoundedIcon.h"

#include <QCache>
#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace quillbay {

namespace {

constexpr int pitch = CardIcons::edge + CardIcons::spacing;
constexpr qreal cornerRadius = 10;
constexpr qreal shadowRadius = 2;
constexpr qreal shadowOffset = 1;
constexpr qreal shadowOpacity = 0.3;

/// What cards show of the same icon, again and again.
QImage keptCardIcon(const QImage &icon)
{
    constexpr int keptBytes = 8 << 20;
    static QCache<qint64, QImage> cache(keptBytes);
    if (const QImage *kept = cache.object(icon.cacheKey()))
        return *kept;
    const QImage made = cardIcon(icon);
    cache.insert(icon.cacheKey(), new QImage(made), int(made.sizeInBytes()));
    return made;
}

} // namespace

QImage cardIcon(const QImage &icon)
{
    if (icon.isNull())
        return {};
    const qreal ratio = qreal(icon.width()) / CardIcons::edge;
    const int reach = int(std::lround(cardIconReach * ratio));
    const QImage face = roundedPicture(icon, cornerRadius * ratio);
    const IconShadow shadow = iconShadow(face, CardIcons::edge, shadowRadius, shadowOffset, shadowOpacity);
    return onShadow(face, shadow, QMargins(reach, reach, reach, reach));
}

CardIcons::CardIcons(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void CardIcons::setApps(AppListModel *apps)
{
    if (apps == m_apps)
        return;
    if (m_apps)
        disconnect(m_apps, nullptr, this, nullptr);
    m_apps = apps;
    if (m_apps) {
        connect(m_apps, &AppListModel::rowsInserted, this, &CardIcons::listChanged);
        connect(m_apps, &AppListModel::rowsRemoved, this, &CardIcons::listChanged);
        connect(m_apps, &AppListModel::rowsMoved, this, &CardIcons::listChanged);
        connect(m_apps, &AppListModel::dataChanged, this, &CardIcons::listChanged);
        connect(m_apps, &QObject::destroyed, this, &CardIcons::listChanged);
    }
    Q_EMIT appsChanged();
    listChanged();
}

void CardIcons::listChanged()
{
    Q_EMIT contentHeightChanged();
    polish();
}

void CardIcons::setOffset(qreal offset)
{
    if (offset == m_offset)
        return;
    m_offset = offset;
    Q_EMIT offsetChanged();
    polish();
}

qreal CardIcons::contentHeight() const
{
    const int count = m_apps ? m_apps->count() : 0;
    return topMargin + (count + columns - 1) / columns * pitch;
}

AppIconLoader &CardIcons::loader(int row)
{
    return *m_loaders[size_t(row) % m_loaders.size()];
}

void CardIcons::updatePolish()
{
    if (!window() || height() <= 0)
        return;
    const int lines = int(std::ceil(height() / pitch)) + 1;
    while (int(m_loaders.size()) < lines * columns) {
        m_loaders.push_back(std::make_unique<AppIconLoader>());
        connect(m_loaders.back().get(), &AppIconLoader::iconChanged, this, [this] {
            if (!m_isAssigning)
                polish();
        });
    }
    const int count = m_apps ? m_apps->count() : 0;
    const int first = std::max(0, int((m_offset - topMargin) / pitch)) * columns;
    const int last = std::min(count, first + lines * columns);
    m_isAssigning = true;
    for (int row = first; row < first + int(m_loaders.size()); ++row) {
        loader(row).setPath(row < last ? m_apps->items()[row].path : QString());
        loader(row).setPixelSize(int(std::lround(edge * window()->effectiveDevicePixelRatio())));
    }
    m_isAssigning = false;
    paint(first, last);
    update();
}

void CardIcons::paint(int first, int last)
{
    const qreal ratio = window()->effectiveDevicePixelRatio();
    m_picture = QImage((size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::transparent);
    QPainter painter(&m_picture);
    for (int row = first; row < last; ++row) {
        const QImage icon = loader(row).icon();
        const QImage shown = keptCardIcon(icon);
        const int reach = (shown.width() - icon.width()) / 2;
        const QPointF place(sideMargin + row % columns * pitch, topMargin + row / columns * pitch - m_offset);
        painter.drawImage((place * ratio).toPoint() - QPoint(reach, reach), shown);
    }
}

QSGNode *CardIcons::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    if (m_picture.isNull()) {
        delete old;
        return nullptr;
    }
    auto *node = old ? static_cast<PictureNode *>(old) : new PictureNode(window());
    node->show(m_picture,
               QRectF(QPointF(), QSizeF(m_picture.size()) / window()->effectiveDevicePixelRatio()));
    return node;
}

void CardIcons::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        polish();
}

void CardIcons::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        polish();
    QQuickItem::itemChange(change, value);
}

} // namespace quillbay
