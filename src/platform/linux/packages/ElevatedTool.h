#pragma once

#include "platform/PackageManager.h"
#include "platform/linux/packages/PackageSurroundings.h"

namespace quillbay::platform {

/// An `ElevatedRun` by pkexec, under its general action, which names the program to the user. Nobody is asked
/// where no desktop shows the question.
///
/// pkexec ends with 126 when the user closed the question and with 127 for every other reason of its own;
/// the package managers' programs end with neither.
ElevatedResult runToolElevated(const PackageSurroundings &surroundings, const QStringList &command);

} // namespace quillbay::platform
