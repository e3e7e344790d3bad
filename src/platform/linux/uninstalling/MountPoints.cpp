#include "platform/linux/uninstalling/MountPoints.h"

#include "elevate/MountTable.h"

namespace quillbay::platform {

std::optional<QList<QByteArray>> currentMountPoints()
{
    const auto points = elevate::mountPoints();
    // There is always one: that of the root folder.
    if (!points || points->empty())
        return std::nullopt;
    QList<QByteArray> result;
    for (const std::string &point : *points)
        result += QByteArray::fromStdString(point);
    return result;
}

} // namespace quillbay::platform
