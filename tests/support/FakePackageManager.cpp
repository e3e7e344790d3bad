#include "support/FakePackageManager.h"

#include <algorithm>
#include <iterator>

namespace quillbay::testing {

using platform::Package;
using platform::PackageRemoval;
using platform::RemovalOutcome;
using platform::RemovalPreview;
using platform::RemovalResult;

Package FakePackageManager::install(const QByteArray &file, const QString &name, const QStringList &others)
{
    Package package{platform::PackageKind::Debian, name, name, name + QStringLiteral(", Debian package")};
    package.canBeRemoved = true;
    const std::scoped_lock lock(m_mutex);
    installed[file] = {package, {RemovalPreview::Verdict::Allowed, QStringList{name} + others, {}, {}}};
    return package;
}

platform::PackageOwner FakePackageManager::owner(const QByteArray &applicationFile) const
{
    const std::scoped_lock lock(m_mutex);
    asked.append(applicationFile);
    const auto found = installed.find(applicationFile);
    if (found == installed.end())
        return {std::nullopt, ownerErrors.value(applicationFile)};
    return {found->package, {}};
}

QByteArrayList FakePackageManager::ofPackages(const QByteArrayList &files) const
{
    QByteArrayList result;
    std::copy_if(files.begin(), files.end(), std::back_inserter(result), [this](const QByteArray &file) {
        const platform::PackageOwner found = owner(file);
        return found.package || !found.error.isEmpty();
    });
    return result;
}

RemovalPreview FakePackageManager::simulateRemoval(const Package &package, platform::PackageData) const
{
    const std::scoped_lock lock(m_mutex);
    simulated.append(package);
    return previewOf(package);
}

RemovalResult FakePackageManager::remove(const PackageRemoval &removal)
{
    {
        const std::scoped_lock lock(m_mutex);
        removals.append(removal);
        const RemovalPreview now = previewOf(removal.package);
        if (now.verdict == RemovalPreview::Verdict::Refused)
            return {RemovalOutcome::Refused, now.reason};
        if (now.verdict == RemovalPreview::Verdict::Unknown)
            return {RemovalOutcome::Failed, now.reason};
        if (now.packages != removal.approved)
            return {RemovalOutcome::Changed, QStringLiteral("other packages would be removed now")};
        if (elevatedCommand.isEmpty() && answer.outcome == RemovalOutcome::Removed)
            installed.removeIf([&](const auto &one) { return one.value().package == removal.package; });
        if (elevatedCommand.isEmpty() || !removal.runElevated)
            return elevatedCommand.isEmpty() ? answer : RemovalResult{RemovalOutcome::NotAuthorised, {}};
    }
    const platform::ElevatedResult result = removal.runElevated(elevatedCommand);
    switch (result.outcome) {
    case platform::ElevatedOutcome::Done:
        return {RemovalOutcome::Removed, {}};
    case platform::ElevatedOutcome::Declined:
        return {RemovalOutcome::Declined, result.text};
    case platform::ElevatedOutcome::NotAuthorised:
        return {RemovalOutcome::NotAuthorised, result.text};
    case platform::ElevatedOutcome::Failed:
        break;
    }
    return {RemovalOutcome::Failed, result.text};
}

RemovalPreview FakePackageManager::previewOf(const Package &package) const
{
    const auto found = std::find_if(installed.begin(), installed.end(),
                                    [&](const Installed &one) { return one.package == package; });
    if (found == installed.end())
        return {RemovalPreview::Verdict::Unknown, {}, {}, QStringLiteral("it is not installed")};
    return found->preview;
}

} // namespace quillbay::testing
