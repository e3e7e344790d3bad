#pragma once

#include "platform/ColorSampler.h"

#include <utility>

namespace quillbay::testing {

/// A screen whose colours the test picks, with `answer`.
class FakeColorSampler final : public platform::ColorSampler
{
public:
    int samplings = 0;

    void answer(const platform::ColorSample &sample) { std::exchange(m_finished, {})(sample); }
    void pick(double red, double green, double blue)
    {
        answer({platform::ColorSample::Outcome::Picked, red, green, blue, {}});
    }
    bool isOpen() const { return bool(m_finished); }

    void sample(Finished finished) override
    {
        if (m_finished)
            return;
        m_finished = std::move(finished);
        ++samplings;
    }

private:
    Finished m_finished;
};

} // namespace quillbay::testing
