#pragma once

#include "platform/FullDiskAccess.h"

namespace quillbay::testing {

/// Access as the test grants it, and a count of what was asked.
class FakeFullDiskAccess final : public platform::FullDiskAccess
{
public:
    bool isGranted = true;
    mutable int checks = 0;
    int openings = 0;

    bool hasAccess() const override
    {
        ++checks;
        return isGranted;
    }
    void openSystemSettings() override { ++openings; }
};

} // namespace quillbay::testing
