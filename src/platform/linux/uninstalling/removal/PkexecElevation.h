#pragma once

#include "platform/Elevation.h"
#include "platform/linux/uninstalling/removal/ElevationHelper.h"

#include <QProcess>

#include <memory>
#include <vector>

namespace quillbay::platform {

/// Elevation by pkexec, found by PATH, which asks through the session's polkit agent. The question is the one
/// of the program's own polkit action where that is installed, else pkexec's general one.
class PkexecElevation : public Elevation
{
public:
    explicit PkexecElevation(ElevationHelper helper);
    ~PkexecElevation() override;

    void run(const ElevatedCommand &command, Finished finished) override;

private:
    struct Run;

    void end(Run *run, const ElevationResult &result);

    ElevationHelper m_helper;
    std::vector<std::unique_ptr<Run>> m_runs;
};

} // namespace quillbay::platform
