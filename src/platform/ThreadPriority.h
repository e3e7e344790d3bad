#pragma once

namespace quillbay::platform {

enum class BackgroundWork {
    Awaited, ///< Its result will be shown; what draws goes first.
    Ahead,   ///< Nobody waits for it.
};

/// Makes the calling thread give way to the others of the program, for the rest of its life. Where the system
/// refuses, the thread keeps its priority.
void lowerThreadPriority(BackgroundWork work);

} // namespace quillbay::platform
