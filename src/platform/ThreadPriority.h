#pragma once

namespace quillbay::platform {

/// Makes the calling thread give way to all others of the program, for the rest of its life: for background
/// work that nobody waits for. Where the system refuses, the thread keeps its priority.
void lowerThreadPriority();

} // namespace quillbay::platform
