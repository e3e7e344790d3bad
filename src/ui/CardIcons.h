#pragma once

#include "app/AppListModel.h"
#include "library/AppIconLoader.h"

#include <QImage>
#include <QPointer>
#include <QQuickItem>

#include <memory>
#include <vector>

namespace quillbay {

/// An application's icon as cards show it: its corners rounded, above a close dark shadow. `icon` is for an
/// edge of 48 units at any device pixel ratio; the result reaches `cardIconReach` units beyond it.
QImage cardIcon(const QImage &icon);
constexpr int cardIconReach = 8;

/// The icons of a card's applications in three columns, as far as they are to be seen.
///
/// All of it is one picture, painted anew when the list, an icon or the offset changes: a grid full of cards
/// costs the scene graph one node for each, and no clip. Only the icons in sight are loaded. Thread: main
/// thread.
class CardIcons : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(quillbay::AppListModel *apps READ apps WRITE setApps NOTIFY appsChanged)
    /// How much of the icons' height lies above the item.
    Q_PROPERTY(qreal offset READ offset WRITE setOffset NOTIFY offsetChanged)
    /// Of all icons, with the space below the last row.
    Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY contentHeightChanged)
    QML_ELEMENT

public:
    explicit CardIcons(QQuickItem *parent = nullptr);

    AppListModel *apps() const { return m_apps; }
    void setApps(AppListModel *apps);
    qreal offset() const { return m_offset; }
    void setOffset(qreal offset);
    qreal contentHeight() const;

    static constexpr int edge = 48;
    static constexpr int spacing = 12;
    static constexpr int columns = 3;
    /// Room above the first row and beside the columns, for shadows.
    static constexpr int topMargin = 4;
    static constexpr int sideMargin = 12;

Q_SIGNALS:
    void appsChanged();
    void offsetChanged();
    void contentHeightChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void listChanged();
    AppIconLoader &loader(int row);
    void paint(int first, int last);

    QPointer<AppListModel> m_apps;
    qreal m_offset = 0;
    std::vector<std::unique_ptr<AppIconLoader>> m_loaders; ///< Row r has the one at r modulo their number.
    bool m_isAssigning = false;
    QImage m_picture;
};

} // namespace quillbay
