#pragma once

#include "analytics/MarlpostInstance.h"

#include <memory>
#include <string>

/// The entry of the analytics client, over the process's own `MarlpostManager`.
namespace quillbay::Marlpost {

/// Starts an instance, or finds the one of that name, and makes it the main instance. Thread: main thread.
std::shared_ptr<MarlpostInstance> initialize(const MarlpostOptions &options,
                                             const MarlpostSurroundings &surroundings);

/// Only after `initialize`. Thread: any.
MarlpostInstance &mainInstance();
/// Null, with a line in the log, before `initialize`. Thread: any.
std::shared_ptr<MarlpostInstance> safeMainInstance();
/// Null, with a line in the log, where there is no such instance. Thread: any.
std::shared_ptr<MarlpostInstance> getInstance(const std::string &name);

/// Whether nothing is queued or under way. Where it is not, the process ends by std::_Exit after `main`:
/// nobody waits for the client, and its threads use what the ordinary end takes apart. Thread: main thread.
bool isIdle();

} // namespace quillbay::Marlpost
