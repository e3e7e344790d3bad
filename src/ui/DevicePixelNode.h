#pragma once

#include <QPointF>
#include <QSGNode>

namespace quillbay {

/// Draws its children at the nearest whole device pixel, unless something turns or scales them: their
/// pictures then keep each pixel one of the screen's. The small step there is found before each frame, since
/// nobody tells an item that one of its ancestors has moved. Thread: render thread.
class DevicePixelNode : public QSGTransformNode
{
public:
    DevicePixelNode();

    /// `aligns` says that the pictures are as large as they are shown, in device pixels.
    void setAlignment(qreal devicePixelRatio, bool aligns);

    void preprocess() override;

protected:
    /// Whether pixels fall on pixels in the frame that is coming. Told before each.
    virtual void setExact(bool exact) = 0;

private:
    qreal m_devicePixelRatio = 1;
    bool m_aligns = false;
    QPointF m_step;
};

} // namespace quillbay
