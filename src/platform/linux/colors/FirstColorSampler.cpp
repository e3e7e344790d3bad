#include "platform/linux/colors/FirstColorSampler.h"

#include <utility>

namespace quillbay::platform {

FirstColorSampler::FirstColorSampler(std::vector<std::unique_ptr<ColorSampler>> ways)
    : m_ways(std::move(ways))
{
}

void FirstColorSampler::sample(Finished finished)
{
    if (m_finished)
        return;
    m_finished = std::move(finished);
    tryWay(0);
}

void FirstColorSampler::tryWay(std::size_t index)
{
    m_ways.at(index)->sample([this, index](const ColorSample &sample) {
        const bool isLast = index + 1 == m_ways.size();
        if (sample.outcome == ColorSample::Outcome::Unavailable && !isLast)
            tryWay(index + 1);
        else
            std::exchange(m_finished, {})(sample);
    });
}

} // namespace quillbay::platform
