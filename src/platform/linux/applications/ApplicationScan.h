#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/applications/ApplicationEnvironment.h"

#include <QStringList>

#include <vector>

namespace quillbay::platform {

struct ApplicationScan
{
    std::vector<InstalledApplication> applications;
    QStringList subfolders; ///< As `listApplications` returns them.
};

/// Every application of the environment, in the order in which `listApplications` lists them, whichever
/// thread read them. Lists on the calling thread while others read already, then reads with them; uses one
/// thread per core, the caller's included, or as many of them as the system grants. Blocks until all is read.
ApplicationScan scanApplications(const ApplicationEnvironment &environment);

} // namespace quillbay::platform
