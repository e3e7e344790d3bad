#pragma once

#include "platform/ColorSampler.h"

#include <QObject>

namespace quillbay::platform {

/// A desktop on which no program sees the screen.
class NoColorSampler final : public ColorSampler
{
public:
    void sample(Finished finished) override;

private:
    QObject m_context; ///< Ends the answers still under way.
};

} // namespace quillbay::platform
