#pragma once

#include <optional>

namespace quillbay::platform {

/// What a scan asks of a file. Dates are seconds since 1970, not a number where the file system keeps none.
struct FileStatus
{
    bool isRegular = false;
    double created = 0;
    double modified = 0;
};

/// Of `path`, relative to the open folder `folder`, links followed; of `folder` itself, which then may be any
/// open file, where the path is empty. Nothing where it cannot be asked.
std::optional<FileStatus> fileStatus(int folder, const char *path);

} // namespace quillbay::platform
