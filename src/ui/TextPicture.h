#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>

namespace quillbay {

/// A short text, painted once as a picture, in the desktop's interface font. For texts of which a screen
/// shows very many: each is a single rectangle to draw, where an item of letters is one for each letter, and
/// the same text is painted once for all that show it.
///
/// Too long a text is wrapped between words, or inside one that is wider than the item, and ends in an
/// ellipsis behind its last line. Thread: main thread.
class TextPicture : public QQuickItem
{
    Q_OBJECT
    /// Plain text.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY lookChanged)
    /// Of the font, in device-independent pixels.
    Q_PROPERTY(int pixelSize READ pixelSize WRITE setPixelSize NOTIFY lookChanged)
    /// Of the font, as `Font.Medium`.
    Q_PROPERTY(int weight READ weight WRITE setWeight NOTIFY lookChanged)
    /// At least 1.
    Q_PROPERTY(int maximumLineCount READ maximumLineCount WRITE setMaximumLineCount NOTIFY lookChanged)
    /// In the middle of the width; else at its left.
    Q_PROPERTY(bool centered READ isCentered WRITE setCentered NOTIFY lookChanged)
    /// Of one line, in whole device-independent pixels.
    Q_PROPERTY(int lineHeight READ lineHeight NOTIFY lookChanged)
    QML_ELEMENT

public:
    explicit TextPicture(QQuickItem *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    QColor color() const { return m_color; }
    void setColor(const QColor &color) { setLook(m_color, color); }
    int pixelSize() const { return m_pixelSize; }
    void setPixelSize(int pixelSize) { setLook(m_pixelSize, pixelSize); }
    int weight() const { return m_weight; }
    void setWeight(int weight) { setLook(m_weight, weight); }
    int maximumLineCount() const { return m_maximumLineCount; }
    void setMaximumLineCount(int count) { setLook(m_maximumLineCount, count); }
    bool isCentered() const { return m_isCentered; }
    void setCentered(bool centered) { setLook(m_isCentered, centered); }
    int lineHeight() const;

Q_SIGNALS:
    void textChanged();
    void lookChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    template <typename Value>
    void setLook(Value &mine, const Value &value)
    {
        if (mine == value)
            return;
        mine = value;
        Q_EMIT lookChanged();
        polish();
    }

    QString m_text;
    QColor m_color = Qt::black;
    int m_pixelSize = 13;
    int m_weight = 400;
    int m_maximumLineCount = 1;
    bool m_isCentered = false;
    QImage m_picture;
    QPointF m_place;
};

} // namespace quillbay
