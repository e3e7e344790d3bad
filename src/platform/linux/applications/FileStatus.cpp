#include "platform/linux/applications/FileStatus.h"

#include <limits>

#include <fcntl.h>
#include <sys/stat.h>

namespace quillbay::platform {

namespace {

double seconds(const struct statx &status, unsigned field, const statx_timestamp &time)
{
    if (!(status.stx_mask & field))
        return std::numeric_limits<double>::quiet_NaN();
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

} // namespace

std::optional<FileStatus> fileStatus(int folder, const char *path)
{
    struct statx status = {};
    const int flags = *path == '\0' ? AT_EMPTY_PATH : 0;
    if (::statx(folder, path, flags, STATX_TYPE | STATX_BTIME | STATX_MTIME, &status) != 0)
        return std::nullopt;
    return FileStatus{S_ISREG(status.stx_mode), seconds(status, STATX_BTIME, status.stx_btime),
                      seconds(status, STATX_MTIME, status.stx_mtime)};
}

} // namespace quillbay::platform
