#pragma once

#include <QImage>
#include <QRectF>
#include <QSGNode>

#include <array>
#include <memory>

class QQuickWindow;
class QSGImageNode;
class QSGTexture;

namespace quillbay {

/// A picture around a hole, stretched and smooth. Thread: render thread.
class PictureFrameNode : public QSGNode
{
public:
    explicit PictureFrameNode(QQuickWindow *window);
    ~PictureFrameNode() override;

    /// Draws `image` over `rect` except in `hole`, which lies within it.
    void show(const QImage &image, const QRectF &rect, const QRectF &hole);

private:
    QQuickWindow *m_window;
    std::shared_ptr<QSGTexture> m_texture;
    std::array<std::unique_ptr<QSGImageNode>, 4> m_parts;
};

} // namespace quillbay
