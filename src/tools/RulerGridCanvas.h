#pragma once

#include <QColor>
#include <QList>
#include <QQuickItem>

namespace quillbay {

/// The lines of the ruler: ticks along all four edges and dashed ones through the middle, each on whole
/// device pixels. Only drawn anew when the size or the screen changes. The item must begin at a whole device
/// pixel, as one does that fills a window. Thread: main thread.
class RulerGridCanvas : public QQuickItem
{
    Q_OBJECT
    /// Of the strongest line at full opacity.
    Q_PROPERTY(QColor ink READ ink WRITE setInk NOTIFY inkChanged REQUIRED)
    /// The numbers along the top and the left edge, which stand at as many pixels.
    Q_PROPERTY(QList<int> horizontalLabels READ horizontalLabels NOTIFY horizontalLabelsChanged)
    Q_PROPERTY(QList<int> verticalLabels READ verticalLabels NOTIFY verticalLabelsChanged)

public:
    explicit RulerGridCanvas(QQuickItem *parent = nullptr);

    QColor ink() const { return m_ink; }
    void setInk(const QColor &ink);
    QList<int> horizontalLabels() const { return m_horizontalLabels; }
    QList<int> verticalLabels() const { return m_verticalLabels; }

Q_SIGNALS:
    void inkChanged();
    void horizontalLabelsChanged();
    void verticalLabelsChanged();

protected:
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QColor m_ink;
    QList<int> m_horizontalLabels;
    QList<int> m_verticalLabels;
};

} // namespace quillbay
