#include "platform/linux/packages/DebianPackages.h"

#include "platform/linux/packages/DebianOutput.h"
#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

namespace quillbay::platform {

namespace {

PackageOwner ownerError(const QString &error)
{
    return {std::nullopt, error};
}

} // namespace

DebianPackages::DebianPackages(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
{
}

bool DebianPackages::isAvailable() const
{
    return !m_surroundings.tool(QStringLiteral("dpkg-query")).isEmpty();
}

bool DebianPackages::canRemove() const
{
    return !m_surroundings.tool(QStringLiteral("apt-get")).isEmpty() &&
           !m_surroundings.tool(QStringLiteral("dpkg")).isEmpty();
}

PackageAnswer<QByteArray> DebianPackages::search(const QByteArrayList &paths) const
{
    QStringList arguments = {QStringLiteral("--search"), QStringLiteral("--")};
    for (const QByteArray &path : paths) {
        // A line feed cannot be in the database, whose lists are lines.
        if (!path.contains('\n'))
            arguments.append(QString::fromUtf8(debianSearchPattern(path)));
    }
    if (arguments.size() == 2)
        return {};
    const PackageToolResult result = runPackageTool(m_surroundings.tool(QStringLiteral("dpkg-query")),
                                                    arguments, m_surroundings.questionLimit);
    // One: not all of them are in it.
    if (!result.exitedWith(0) && !result.exitedWith(1))
        return packageError<QByteArray>(result.problem());
    if (result.exitCode == 1 && !result.errors.contains("no path found matching pattern"))
        return packageError<QByteArray>(result.problem());
    return {result.output, {}};
}

PackageOwner DebianPackages::owner(const FileSpellings &file) const
{
    const PackageAnswer<QByteArray> answer = search(file.own + file.target);
    if (!answer)
        return ownerError(answer.error);
    DebianOwners owners = debianOwners(answer.value, file.own);
    if (owners.names.isEmpty() && !owners.isDiverted)
        owners = debianOwners(answer.value, file.target);
    if (owners.names.isEmpty() && owners.isDiverted)
        return ownerError(QStringLiteral("a package has moved this file out of another's way"));
    if (owners.names.isEmpty())
        return {};
    const PackageAnswer<QList<PackageFacts>> known = facts(owners.names);
    if (!known)
        return ownerError(known.error);
    const PackageFacts &first = known.value.first();
    Package package{PackageKind::Debian, first.name, first.id, packageText(PackageKind::Debian, first.name)};
    package.canBeRemoved = known.value.size() == 1;
    package.installedBytes = first.installedBytes;
    for (const PackageFacts &one : known.value)
        package.isEssential = package.isEssential || one.isEssential;
    return {package, {}};
}

QList<bool> DebianPackages::areOwned(const QList<FileSpellings> &files) const
{
    QByteArrayList paths;
    for (const FileSpellings &file : files)
        paths += file.own + file.target;
    const PackageAnswer<QByteArray> answer = search(paths);
    const auto knows = [&answer](const QByteArrayList &spellings) {
        const DebianOwners owners = debianOwners(answer.value, spellings);
        return !owners.names.isEmpty() || owners.isDiverted;
    };
    QList<bool> result;
    for (const FileSpellings &file : files)
        result.append(!answer || knows(file.own) || knows(file.target));
    return result;
}

PackageAnswer<QSet<QString>> DebianPackages::ownersOf(const QByteArrayList &files) const
{
    QByteArrayList spellings;
    for (const QByteArray &file : files)
        spellings += mergedForms(file);
    const PackageAnswer<QByteArray> answer = search(spellings);
    if (!answer)
        return packageError<QSet<QString>>(answer.error);
    QSet<QString> names;
    for (const QString &name : debianOwners(answer.value, spellings).names)
        names.insert(name.section(u':', 0, 0));
    return {names, {}};
}

PackageAnswer<QList<PackageFacts>> DebianPackages::facts(const QStringList &names) const
{
    using Answer = QList<PackageFacts>;
    QStringList arguments = {QStringLiteral("--show"),
                             QStringLiteral("--showformat=") + QLatin1String(debianFactsFormat),
                             QStringLiteral("--")};
    for (const QString &name : names) {
        if (!isDebianName(name))
            return packageError<Answer>(QStringLiteral("that is no name of a package"));
        arguments.append(name);
    }
    const PackageToolResult result = runPackageTool(m_surroundings.tool(QStringLiteral("dpkg-query")),
                                                    arguments, m_surroundings.questionLimit);
    if (!result.exitedWith(0))
        return packageError<Answer>(result.problem());
    PackageAnswer<Answer> answer = debianFacts(result.output);
    for (const QString &name : names) {
        const QString bare = name.section(u':', 0, 0);
        const bool isThere = std::any_of(answer.value.cbegin(), answer.value.cend(),
                                         [&](const PackageFacts &one) { return one.name == bare; });
        if (answer && !isThere)
            return packageError<Answer>(QStringLiteral("the package %1 is not installed").arg(name));
    }
    return answer;
}

PackageAnswer<SimulatedRemoval> DebianPackages::simulate(const Package &package) const
{
    // Packages that are merely no longer needed stay. Essential ones are listed here, for the rules to refuse
    // what would take them, instead of apt with a riddle.
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(QStringLiteral("apt-get")),
                       {QStringLiteral("--simulate"), QStringLiteral("--yes"), QStringLiteral("-o"),
                        QStringLiteral("APT::Get::AutomaticRemove=false"), QStringLiteral("-o"),
                        QStringLiteral("APT::Get::allow-remove-essential=true"), QStringLiteral("remove"),
                        QStringLiteral("--"), package.id},
                       m_surroundings.simulationLimit);
    if (!result.exitedWith(0))
        return packageError<SimulatedRemoval>(result.problem());
    const PackageAnswer<QStringList> names = debianSimulation(result.output);
    if (!names)
        return packageError<SimulatedRemoval>(names.error);
    return {{names.value, names.value}, {}};
}

QStringList DebianPackages::removalCommand(const QStringList &ids) const
{
    return QStringList{m_surroundings.tool(QStringLiteral("dpkg")), QStringLiteral("--remove"),
                       QStringLiteral("--")} +
           ids;
}

} // namespace quillbay::platform
