#include "platform/ThreadPriority.h"

#include <QtGlobal>

#include <cerrno>
#include <cstring>

#include <sys/resource.h>

namespace quillbay::platform {

void lowerThreadPriority(BackgroundWork work)
{
    // Under the default scheduling policy a thread's priority has no effect here, its nice value has; process
    // 0 is the calling thread.
    const int nice = work == BackgroundWork::Awaited ? 5 : 10;
    if (::setpriority(PRIO_PROCESS, 0, nice) != 0)
        qWarning("Background threads keep their priority: %s", std::strerror(errno));
}

} // namespace quillbay::platform
