#pragma once

#include "library/AppIconLoader.h"
#include "ui/IconShadow.h"

#include <QQuickItem>

#include <array>

namespace quillbay {

/// The icon of an application with its shadow: the real one at once where it is cached, else the generic one
/// until the real one is there. Square; the icon fills the item and is decoded for exactly the device pixels
/// it covers, the shadow reaches beyond it.
///
/// Unless it is turned or scaled, the icon is drawn at the nearest whole device pixel, so that each of its
/// pixels is one of the screen's: where scale factors are fractional no layout in whole units could do that,
/// nor for a list that is scrolled.
///
/// One item draws all of it, since a grid holds many. Thread: main thread.
class AppIconView : public QQuickItem
{
    Q_OBJECT
    /// The application's path.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// How far the pointer's look has come, 0 to 1: the shadow goes from its resting to its lifted form.
    /// Values beyond the ends, as a spring gives, count as the ends.
    Q_PROPERTY(qreal lift READ lift WRITE setLift NOTIFY liftChanged)
    QML_ELEMENT

public:
    explicit AppIconView(QQuickItem *parent = nullptr);

    QString path() const { return m_path; }
    void setPath(const QString &path);
    qreal lift() const { return m_lift; }
    void setLift(qreal lift);

Q_SIGNALS:
    void pathChanged();
    void liftChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void componentComplete() override;

private:
    class Node;

    void updatePixelSize();
    void takeIcon();

    AppIconLoader m_loader;
    QString m_path;
    QImage m_icon;
    QImage m_atRest;                     ///< The icon on its resting shadow.
    std::array<IconShadow, 2> m_shadows; ///< Resting and lifted, once the pointer has been there.
    qreal m_lift = 0;
    bool m_isNew = false;
};

} // namespace quillbay
