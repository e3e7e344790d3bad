#include "ui/DevicePixelNode.h"

#include <QMatrix4x4>

#include <cmath>
#include <optional>

namespace quillbay {

namespace {

/// Where the origin of `node` lies in the scene; nothing if something turns or scales it on the way.
std::optional<QPointF> translation(const QSGNode *node)
{
    QPointF sum;
    for (; node; node = node->parent()) {
        if (node->type() != QSGNode::TransformNodeType)
            continue;
        const QMatrix4x4 &matrix = static_cast<const QSGTransformNode *>(node)->matrix();
        if (matrix.flags() & ~QMatrix4x4::Flags(QMatrix4x4::Translation))
            return std::nullopt;
        sum += QPointF(qreal(matrix(0, 3)), qreal(matrix(1, 3)));
    }
    return sum;
}

} // namespace

DevicePixelNode::DevicePixelNode()
{
    setFlag(UsePreprocess);
}

void DevicePixelNode::setAlignment(qreal devicePixelRatio, bool aligns)
{
    m_devicePixelRatio = devicePixelRatio;
    m_aligns = aligns;
}

void DevicePixelNode::preprocess()
{
    const std::optional<QPointF> origin = m_aligns ? translation(parent()) : std::nullopt;
    QPointF step;
    if (origin) {
        const QPointF pixel = *origin * m_devicePixelRatio;
        step = QPointF(std::round(pixel.x()), std::round(pixel.y())) / m_devicePixelRatio - *origin;
    }
    if (step != m_step) {
        m_step = step;
        QMatrix4x4 matrix;
        matrix.translate(float(step.x()), float(step.y()));
        setMatrix(matrix);
    }
    setExact(origin.has_value());
}

} // namespace quillbay
