#include "platform/none/NoColorSampler.h"

namespace quillbay::platform {

void NoColorSampler::sample(Finished finished)
{
    QMetaObject::invokeMethod(
        &m_context,
        [finished = std::move(finished)] {
            ColorSample sample;
            sample.reason = QStringLiteral("this desktop shows programs nothing of the screen");
            finished(sample);
        },
        Qt::QueuedConnection);
}

} // namespace quillbay::platform
