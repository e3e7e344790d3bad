#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/applications/ApplicationEnvironment.h"
#include "platform/linux/applications/FolderListing.h"

#include <vector>

namespace quillbay::platform {

/// Looks at the files of `batches` and returns the applications among them, in the order of the batches and
/// of the names in each, whichever thread read them. Blocks until all are read; uses one thread per core, the
/// caller's included, or as many of them as the system grants.
std::vector<InstalledApplication> scanBatches(const std::vector<ScanBatch> &batches,
                                              const ApplicationEnvironment &environment);

} // namespace quillbay::platform
