#include "platform/none/NoPackageManager.h"

namespace quillbay::platform {

namespace {

QString noManager()
{
    return QStringLiteral("this system has no package manager");
}

} // namespace

PackageOwner NoPackageManager::owner(const QByteArray &) const
{
    return {};
}

RemovalPreview NoPackageManager::simulateRemoval(const Package &, PackageData) const
{
    return {RemovalPreview::Verdict::Unknown, {}, {}, noManager()};
}

RemovalResult NoPackageManager::remove(const PackageRemoval &)
{
    return {RemovalOutcome::Failed, noManager()};
}

} // namespace quillbay::platform
