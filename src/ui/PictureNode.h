#pragma once

#include "ui/DevicePixelNode.h"

#include <QImage>
#include <QRectF>

#include <memory>

class QQuickWindow;
class QSGImageNode;
class QSGTexture;

namespace quillbay {

/// The texture of `image` that nodes of this window and thread show at the moment, or a new one. It lives for
/// as long as one of them holds it.
std::shared_ptr<QSGTexture> sharedTexture(QQuickWindow *window, const QImage &image);

/// A picture in the scene. Its pixels are the screen's where it is shown at its own size, and smoothed where
/// it is stretched, turned or scaled. All nodes of a window that show the same picture share its texture.
/// Thread: render thread.
class PictureNode : public DevicePixelNode
{
public:
    explicit PictureNode(QQuickWindow *window);
    ~PictureNode() override;

    /// Draws `image` over `rect`, in the item's coordinates; the same image again costs nothing. `rect`
    /// counts as the picture's own size if it is less than a device pixel off, and is made exactly that.
    void show(const QImage &image, const QRectF &rect);

protected:
    void setExact(bool exact) override;

private:
    QQuickWindow *m_window;
    std::shared_ptr<QSGTexture> m_texture;
    std::unique_ptr<QSGImageNode> m_image;
    qint64 m_key = 0;
};

} // namespace quillbay
