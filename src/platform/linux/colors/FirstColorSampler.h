#pragma once

#include "platform/ColorSampler.h"

#include <memory>
#include <vector>

namespace quillbay::platform {

/// Several ways, tried in turn until one can do it.
class FirstColorSampler final : public ColorSampler
{
public:
    explicit FirstColorSampler(std::vector<std::unique_ptr<ColorSampler>> ways);

    /// Where no way can do it, the reason is that of the last.
    void sample(Finished finished) override;

private:
    void tryWay(std::size_t index);

    std::vector<std::unique_ptr<ColorSampler>> m_ways; ///< At least one.
    Finished m_finished;                               ///< Set while a sampling is open.
};

} // namespace quillbay::platform
