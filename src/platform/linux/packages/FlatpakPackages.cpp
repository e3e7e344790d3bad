#include "platform/linux/packages/FlatpakPackages.h"

#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

#include <algorithm>

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

PackageAnswer<FlatpakPackages::Installed> FlatpakPackages::installed(const QString &id, bool forOneUser) const
{
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(toolName()),
                       {QStringLiteral("info"), scope(forOneUser), QStringLiteral("--show-ref"),
                        QStringLiteral("--show-size"), id},
                       m_surroundings.questionLimit);
    if (result.exitedWith(1) && result.errors.contains("not installed"))
        return {};
    if (!result.exitedWith(0))
        return packageError<Installed>(result.problem());
    const QByteArrayList words = result.output.simplified().split(' ');
    const QString reference = QString::fromUtf8(words.first());
    if (!isFlatpakReference(reference, id))
        return packageError<Installed>(QStringLiteral("flatpak gave an answer that cannot be read"));
    return {{reference, std::max<qint64>(words.value(1).toLongLong(), 0)}, {}};
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
        const PackageAnswer<Installed> found = installed(id, forOneUser);
        if (!found)
            return {std::nullopt, found.error};
        if (found.value.reference.isEmpty())
            continue;
        package.id = found.value.reference;
        package.installedBytes = found.value.bytes;
        package.isForOneUser = forOneUser;
        package.canBeRemoved = true;
        return {package, {}};
    }
    return {std::nullopt, isExported ? QStringLiteral("flatpak does not know this application") : QString()};
}

RemovalPreview FlatpakPackages::simulate(const Package &package, PackageData data) const
{
    const PackageAnswer<Installed> found = installed(package.name, package.isForOneUser);
    if (!found)
        return {RemovalPreview::Verdict::Unknown, {}, {}, found.error};
    if (found.value.reference != package.id)
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
