#include "ui/TextPicture.h"

#include "ui/PaintedText.h"
#include "ui/PictureNode.h"

#include <QQuickWindow>

namespace quillbay {

TextPicture::TextPicture(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void TextPicture::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    polish();
}

int TextPicture::lineHeight() const
{
    return textLineHeight(m_pixelSize, m_weight);
}

void TextPicture::updatePolish()
{
    if (!window())
        return;
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const PaintedText painted = paintText(
        {m_text, m_color.rgba(), m_pixelSize, m_weight, m_maximumLineCount, m_isCentered, width(), ratio});
    m_picture = painted.picture;
    m_place = QPointF(painted.place) / ratio;
    update();
}

QSGNode *TextPicture::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    if (m_picture.isNull()) {
        delete old;
        return nullptr;
    }
    auto *node = old ? static_cast<PictureNode *>(old) : new PictureNode(window());
    node->show(m_picture, QRectF(m_place, QSizeF(m_picture.size()) / window()->effectiveDevicePixelRatio()));
    return node;
}

void TextPicture::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        polish();
}

void TextPicture::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        polish();
    QQuickItem::itemChange(change, value);
}

} // namespace quillbay
