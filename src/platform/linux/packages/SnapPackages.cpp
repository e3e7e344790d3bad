#include "platform/linux/packages/SnapPackages.h"

#include "platform/linux/packages/ElevatedRemoval.h"
#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace quillbay::platform {

namespace {

QString toolName()
{
    return QStringLiteral("snap");
}

/// The last column of `snap list` says what a snap is for.
bool isSystemNote(const QByteArray &note)
{
    static const std::array<QByteArrayView, 6> notes = {"base", "core", "os", "kernel", "gadget", "snapd"};
    return std::find(notes.begin(), notes.end(), note) != notes.end();
}

} // namespace

SnapPackages::SnapPackages(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
{
}

PackageAnswer<SnapPackages::Installed> SnapPackages::installed(const QString &name) const
{
    const PackageToolResult result = runPackageTool(
        m_surroundings.tool(toolName()), {QStringLiteral("list"), name}, m_surroundings.questionLimit);
    if (result.exitedWith(1) && result.errors.contains("no matching snaps installed"))
        return {};
    if (!result.exitedWith(0))
        return packageError<Installed>(result.problem());
    for (const QByteArray &line : result.output.split('\n')) {
        const QByteArrayList columns = line.simplified().split(' ');
        if (columns.size() < 6 || columns.first() != name.toUtf8())
            continue;
        const QByteArrayList notes = columns.last().split(',');
        const bool isSystem = std::any_of(notes.begin(), notes.end(), isSystemNote);
        return {{isSystem ? Kind::System : Kind::Application, QString::fromUtf8(columns[2])}, {}};
    }
    return packageError<Installed>(QStringLiteral("snap gave an answer that cannot be read"));
}

PackageOwner SnapPackages::owner(const FileSpellings &file, const QString &name) const
{
    const QByteArrayList paths = file.own + file.target;
    const bool isExported = std::any_of(paths.begin(), paths.end(), [](const QByteArray &path) {
        return path.contains("/snapd/desktop/applications/");
    });
    if (!isSnapName(name))
        return {std::nullopt, isExported ? QStringLiteral("the entry names no snap") : QString()};
    Package package{PackageKind::Snap, name, name, packageText(PackageKind::Snap, name)};
    if (m_surroundings.tool(toolName()).isEmpty())
        return isExported ? PackageOwner{package, {}} : PackageOwner{};
    const PackageAnswer<Installed> found = installed(name);
    if (!found)
        return {std::nullopt, found.error};
    if (found.value.kind == Kind::None)
        return {std::nullopt, isExported ? QStringLiteral("snap does not know this application") : QString()};
    package.canBeRemoved = true;
    package.isEssential = found.value.kind == Kind::System;
    // Asking snap itself would ask its store. The image is what is on the disk.
    package.installedBytes =
        QFileInfo(m_surroundings.snapFolder + QStringLiteral("/%1_%2.snap").arg(name, found.value.revision))
            .size();
    return {package, {}};
}

RemovalPreview SnapPackages::simulate(const Package &package, PackageData data) const
{
    const PackageAnswer<Installed> found = installed(package.name);
    if (!found)
        return {RemovalPreview::Verdict::Unknown, {}, {}, found.error};
    if (found.value.kind == Kind::None)
        return {RemovalPreview::Verdict::Unknown,
                {},
                {},
                QStringLiteral("the application is not installed any more")};
    const bool isSystem = found.value.kind == Kind::System;
    const QString folder = data == PackageData::Remove ? QStringLiteral("~/snap/") + package.name : QString();
    return {isSystem ? RemovalPreview::Verdict::Refused : RemovalPreview::Verdict::Allowed,
            {package.name},
            folder,
            isSystem ? QStringLiteral("the system of snaps stands on %1").arg(package.name) : QString()};
}

RemovalResult SnapPackages::remove(const Package &package, PackageData data,
                                   const ElevatedRun &runElevated) const
{
    const QString tool = m_surroundings.tool(toolName());
    QStringList arguments = {QStringLiteral("remove")};
    if (data == PackageData::Remove)
        arguments.append(QStringLiteral("--purge"));
    arguments.append(package.name);
    const PackageToolResult result = runPackageTool(tool, arguments, m_surroundings.removalLimit);
    if (result.exitedWith(0))
        return {RemovalOutcome::Removed, {}};
    if (result.end != PackageToolResult::End::Exited || !result.errors.contains("access denied"))
        return {RemovalOutcome::Failed, result.problem()};
    return removeElevated(runElevated, QStringList{tool} + arguments);
}

} // namespace quillbay::platform
