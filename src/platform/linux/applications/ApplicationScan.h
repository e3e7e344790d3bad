#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/applications/ApplicationEnvironment.h"

#include <vector>

namespace quillbay::platform {

/// Every application of the environment, in the order in which `listApplications` lists them, whichever
/// thread read them. Lists on the calling thread while others read already, then reads with them; uses one
/// thread per core, the caller's included, or as many of them as the system grants. Blocks until all is read.
std::vector<InstalledApplication> scanApplications(const ApplicationEnvironment &environment);

} // namespace quillbay::platform
