#include "platform/linux/packages/ElevatedTool.h"

#include "platform/linux/packages/PackageTool.h"

namespace quillbay::platform {

namespace {

constexpr int dismissed = 126;
constexpr int notAuthorised = 127;

} // namespace

ElevatedResult runToolElevated(const PackageSurroundings &surroundings, const QStringList &command)
{
    const QString pkexec = surroundings.tool(QStringLiteral("pkexec"));
    if (pkexec.isEmpty())
        return {ElevatedOutcome::NotAuthorised, QStringLiteral("pkexec is not installed")};
    const PackageToolResult result = runPackageTool(
        pkexec, QStringList{QStringLiteral("--disable-internal-agent")} + command, surroundings.removalLimit);
    if (result.exitedWith(0))
        return {ElevatedOutcome::Done, {}};
    if (result.exitedWith(dismissed))
        return {ElevatedOutcome::Declined, result.problem()};
    return {result.exitedWith(notAuthorised) ? ElevatedOutcome::NotAuthorised : ElevatedOutcome::Failed,
            result.problem()};
}

} // namespace quillbay::platform
