#include "platform/linux/packages/RpmPackages.h"

#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace quillbay::platform {

namespace {

constexpr int mostRounds = 40;
constexpr qint64 longestProtection = 64 * 1024;

QString rpmName()
{
    return QStringLiteral("rpm");
}

bool exists(const QByteArray &path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0;
}

} // namespace

RpmPackages::RpmPackages(const PackageSurroundings &surroundings)
    : m_surroundings(surroundings)
{
}

bool RpmPackages::isAvailable() const
{
    return !m_surroundings.tool(rpmName()).isEmpty();
}

PackageAnswer<QList<RpmRecord>> RpmPackages::owners(const QByteArrayList &files) const
{
    using Answer = QList<RpmRecord>;
    QStringList arguments = {QStringLiteral("--query"), QStringLiteral("--queryformat"),
                             QLatin1String(rpmRecordFormat), QStringLiteral("--file"), QStringLiteral("--")};
    const qsizetype fixed = arguments.size();
    for (const QByteArray &file : files) {
        if (!file.isValidUtf8())
            return packageError<Answer>(QStringLiteral("rpm cannot be asked for this name"));
        if (exists(file))
            arguments.append(QString::fromUtf8(file));
    }
    if (arguments.size() == fixed)
        return {};
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(rpmName()), arguments, m_surroundings.questionLimit);
    // The code counts the files that no package owns.
    if (result.end != PackageToolResult::End::Exited || hasRpmError(result.errors))
        return packageError<Answer>(result.problem());
    const Answer found = rpmRecords(result.output);
    if (found.isEmpty() && !result.output.contains("is not owned by any package"))
        return packageError<Answer>(result.problem());
    return {found, {}};
}

PackageOwner RpmPackages::owner(const FileSpellings &file) const
{
    // It compares folders by what they are, so one spelling does.
    PackageAnswer<QList<RpmRecord>> found = owners(file.own.mid(0, 1));
    if (found && found.value.isEmpty())
        found = owners(file.target.mid(0, 1));
    if (!found)
        return {std::nullopt, found.error};
    if (found.value.isEmpty())
        return {};
    const RpmRecord &first = found.value.first();
    Package package{PackageKind::Rpm, first.name, first.id, packageText(PackageKind::Rpm, first.name)};
    package.canBeRemoved = found.value.size() == 1;
    package.installedBytes = first.installedBytes;
    package.isEssential = protectedNames().contains(first.name);
    return {package, {}};
}

PackageAnswer<QSet<QString>> RpmPackages::ownersOf(const QByteArrayList &files) const
{
    const PackageAnswer<QList<RpmRecord>> found = owners(files);
    QSet<QString> names;
    for (const RpmRecord &record : found.value)
        names.insert(record.name);
    return {names, found.error};
}

PackageAnswer<QList<RpmRecord>> RpmPackages::records(const QStringList &names) const
{
    for (const QString &name : names) {
        if (!isRpmName(name))
            return packageError<QList<RpmRecord>>(QStringLiteral("that is no name of a package"));
    }
    const PackageToolResult result =
        runPackageTool(m_surroundings.tool(rpmName()),
                       QStringList{QStringLiteral("--query"), QStringLiteral("--queryformat"),
                                   QLatin1String(rpmRecordFormat), QStringLiteral("--")} +
                           names,
                       m_surroundings.questionLimit);
    if (!result.exitedWith(0))
        return packageError<QList<RpmRecord>>(result.errors.isEmpty() &&
                                                      result.output.contains("is not installed")
                                                  ? QStringLiteral("a package of the list is not installed")
                                                  : result.problem());
    return {rpmRecords(result.output), {}};
}

PackageAnswer<QList<PackageFacts>> RpmPackages::facts(const QStringList &names) const
{
    const PackageAnswer<QList<RpmRecord>> found = records(names);
    if (!found)
        return packageError<QList<PackageFacts>>(found.error);
    const QSet<QString> protection = protectedNames();
    QList<PackageFacts> facts;
    for (const RpmRecord &record : found.value)
        facts.append({record.name, record.id, protection.contains(record.name), {}});
    if (facts.size() < names.size())
        return packageError<QList<PackageFacts>>(QStringLiteral("a package of the list is not installed"));
    return {facts, {}};
}

PackageAnswer<SimulatedRemoval> RpmPackages::simulate(const Package &package) const
{
    QStringList ids = {package.id};
    for (int round = 0; round < mostRounds; ++round) {
        const PackageToolResult result = runPackageTool(
            m_surroundings.tool(rpmName()),
            QStringList{QStringLiteral("--erase"), QStringLiteral("--test"), QStringLiteral("--")} + ids,
            m_surroundings.simulationLimit);
        if (result.exitedWith(0)) {
            const PackageAnswer<QList<RpmRecord>> going = records(ids);
            SimulatedRemoval removal{{}, ids};
            for (const RpmRecord &record : going.value)
                removal.names.append(record.listedName);
            return {removal, going.error};
        }
        if (result.end != PackageToolResult::End::Exited)
            return packageError<SimulatedRemoval>(result.problem());
        const PackageAnswer<QStringList> dependents = rpmDependents(result.errors);
        if (!dependents)
            return packageError<SimulatedRemoval>(dependents.error);
        const qsizetype before = ids.size();
        for (const QString &id : dependents.value) {
            if (!ids.contains(id))
                ids.append(id);
        }
        if (ids.size() == before)
            return packageError<SimulatedRemoval>(presentable(result.errors));
    }
    return packageError<SimulatedRemoval>(QStringLiteral("too many packages depend on this one"));
}

QStringList RpmPackages::removalCommand(const QStringList &ids) const
{
    return QStringList{m_surroundings.tool(rpmName()), QStringLiteral("--erase"), QStringLiteral("--")} + ids;
}

QSet<QString> RpmPackages::protectedNames() const
{
    QSet<QString> names;
    for (const char *name : {"filesystem", "setup", "glibc", "bash", "coreutils", "systemd", "rpm", "dnf",
                             "dnf5", "zypper", "sudo", "kernel", "kernel-core"})
        names.insert(QLatin1String(name));
    for (const QString &folder : m_surroundings.protectionFolders) {
        for (const QFileInfo &entry :
             QDir(folder).entryInfoList({QStringLiteral("*.conf")}, QDir::Files | QDir::Readable)) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly))
                continue;
            for (const QByteArray &line : file.read(longestProtection).split('\n'))
                names.insert(QString::fromUtf8(line.trimmed()));
        }
    }
    return names;
}

} // namespace quillbay::platform
