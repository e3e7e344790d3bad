#include "platform/linux/packages/FlatpakPackages.h"

#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

namespace quillbay::platform {

namespace {

QString toolName()
{
    return QStringLiteral("flatpak");
}

QString scope(bool forOneUser)
{
    return forOneUser ? QStringLiteral("--user") : QStringLiteral("--system");
}

/// Where the entry lies among those that flatpak shows to the desktop; empty if it does not.
QByteArray exportedPath(const FileSpellings &file)
{
    for (const QByteArray &path : file.own + file.target) {
        if (path.contains("/exports/share/applications/") || path.contains("/export/share/applications/"))
            return path;
    }
    return {};
}

} // namespace

FlatpakPackages::FlatpakPackages(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
{
}

PackageAnswer<QString> FlatpakPackages::reference(const QString &id, bool forOneUser) const
{
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(toolName()),
                       {QStringLiteral("info"), scope(forOneUser), QStringLiteral("--show-ref"), id},
                       m_surroundings.questionLimit);
    if (result.exitedWith(1) && result.errors.contains("not installed"))
        return {};
    if (!result.exitedWith(0))
        return packageError<QString>(result.problem());
    const QString reference = QString::fromUtf8(result.output.trimmed());
    if (!isFlatpakReference(reference, id))
        return packageError<QString>(QStringLiteral("flatpak gave an answer that cannot be read"));
    return {reference, {}};
}

PackageOwner FlatpakPackages::owner(const FileSpellings &file, const QString &id) const
{
    const QByteArray exported = exportedPath(file);
    const bool isExported = !exported.isEmpty();
    if (!isFlatpakId(id))
        return {std::nullopt,
                isExported ? QStringLiteral("the entry names no application of flatpak") : QString()};
    Package package{PackageKind::Flatpak, id, {}, packageText(PackageKind::Flatpak, id)};
    if (m_surroundings.tool(toolName()).isEmpty())
        return isExported ? PackageOwner{package, {}} : PackageOwner{};
    const bool userFirst = !isExported || exported.startsWith(m_surroundings.home + '/');
    for (const bool forOneUser : {userFirst, !userFirst}) {
        const PackageAnswer<QString> found = reference(id, forOneUser);
        if (!found)
            return {std::nullopt, found.error};
        if (found.value.isEmpty())
            continue;
        package.id = found.value;
        package.isForOneUser = forOneUser;
        package.canBeRemoved = true;
        return {package, {}};
    }
    return {std::nullopt, isExported ? QStringLiteral("flatpak does not know this application") : QString()};
}

RemovalPreview FlatpakPackages::simulate(const Package &package, PackageData data) const
{
    const PackageAnswer<QString> found = reference(package.name, package.isForOneUser);
    if (!found)
        return {RemovalPreview::Verdict::Unknown, {}, {}, found.error};
    if (found.value != package.id)
        return {RemovalPreview::Verdict::Unknown,
                {},
                {},
                QStringLiteral("the application is not installed any more")};
    const QString folder =
        data == PackageData::Remove ? QStringLiteral("~/.var/app/") + package.name : QString();
    return {RemovalPreview::Verdict::Allowed, {package.name}, folder, {}};
}

RemovalResult FlatpakPackages::remove(const Package &package, PackageData data) const
{
    QStringList arguments = {QStringLiteral("uninstall"), scope(package.isForOneUser), QStringLiteral("-y")};
    if (data == PackageData::Remove)
        arguments.append(QStringLiteral("--delete-data"));
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(toolName()), arguments << package.id, m_surroundings.removalLimit);
    if (result.exitedWith(0))
        return {RemovalOutcome::Removed, {}};
    // Its word for a dismissed question, too.
    const bool isForbidden =
        result.errors.contains("not allowed for user") || result.errors.contains("Not authorized");
    return {isForbidden ? RemovalOutcome::NotAuthorised : RemovalOutcome::Failed, result.problem()};
}

} // namespace quillbay::platform
