#include "platform/linux/packages/DebianOutput.h"

#include "platform/linux/packages/PackageNames.h"

#include <algorithm>
#include <optional>

namespace quillbay::platform {

namespace {

QString bareName(const QString &name)
{
    return name.section(u':', 0, 0);
}

struct SearchLine
{
    QByteArray owners;
    QByteArray path;
};

std::optional<SearchLine> searchLine(const QByteArray &line)
{
    // No package name holds this, while a path may.
    const qsizetype end = line.indexOf(": /");
    if (end <= 0)
        return std::nullopt;
    return SearchLine{line.left(end), line.mid(end + 2)};
}

/// The package in "diversion by NAME from"; null if the line is none of that kind, empty for a local one.
QString diverter(const QByteArray &owners, const QByteArray &direction)
{
    if (owners == "local diversion " + direction)
        return QStringLiteral("");
    const QByteArray start = "diversion by ";
    const QByteArray end = ' ' + direction;
    if (!owners.startsWith(start) || !owners.endsWith(end))
        return {};
    return QString::fromUtf8(owners.mid(start.size(), owners.size() - start.size() - end.size()));
}

QStringList validNames(const QByteArray &owners)
{
    QStringList names = QString::fromUtf8(owners).split(QStringLiteral(", "));
    if (!std::all_of(names.begin(), names.end(), isDebianName))
        return {};
    return names;
}

/// In KiB, as a packager reckoned it; not every package says.
qint64 bytesOf(const QByteArray &installedSize)
{
    return qint64(installedSize.toUInt()) * 1024;
}

QStringList namesOf(const QByteArray &list)
{
    QStringList names;
    for (const QByteArray &item : list.split(','))
        names.append(QString::fromUtf8(item.trimmed()).section(u' ', 0, 0).section(u':', 0, 0));
    names.removeAll(QString());
    return names;
}

} // namespace

QByteArray debianSearchPattern(const QByteArray &path)
{
    // An argument is text to the process class; bytes that are none are asked for as "any byte", and the
    // answer, which has them, tells.
    const bool isText = path.isValidUtf8();
    QByteArray pattern;
    for (const char byte : path) {
        if (byte == '*' || byte == '?' || byte == '[' || byte == ']' || byte == '\\')
            pattern += '\\';
        pattern += !isText && (byte & 0x80) ? '?' : byte;
    }
    return pattern;
}

DebianOwners debianOwners(const QByteArray &output, const QByteArrayList &spellings)
{
    DebianOwners result;
    QString divertedBy;
    for (const QByteArray &line : output.split('\n')) {
        const std::optional<SearchLine> found = searchLine(line);
        if (!found || !spellings.contains(found->path))
            continue;
        if (const QString package = diverter(found->owners, "from"); !package.isNull()) {
            divertedBy = package;
        } else if (!diverter(found->owners, "to").isNull()) {
            result.isDiverted = true;
        } else {
            for (const QString &name : validNames(found->owners)) {
                if (!result.names.contains(name))
                    result.names.append(name);
            }
        }
    }
    if (!divertedBy.isNull()) {
        result.names.removeIf([&](const QString &name) { return bareName(name) != divertedBy; });
    }
    return result;
}

PackageAnswer<QList<PackageFacts>> debianFacts(const QByteArray &output)
{
    QList<PackageFacts> result;
    for (const QByteArray &line : output.split('\n')) {
        if (line.isEmpty())
            continue;
        const QByteArrayList fields = line.split('\t');
        const QString name = QString::fromUtf8(fields.value(0));
        const QString id = QString::fromUtf8(fields.value(1));
        if (fields.size() != 8 || !isDebianName(name) || !isDebianName(id))
            return packageError<QList<PackageFacts>>(
                QStringLiteral("the package database gave an answer that cannot be read"));
        // One whose configuration alone is left is none.
        if (fields[2] == "not-installed" || fields[2] == "config-files")
            continue;
        const bool isEssential =
            fields[3] == "yes" || fields[4] == "yes" || fields[5] == "required" || fields[5] == "important";
        result.append({name, id, isEssential, namesOf(fields[7]), bytesOf(fields[6])});
    }
    return {result, {}};
}

PackageAnswer<QStringList> debianSimulation(const QByteArray &output)
{
    QStringList names;
    for (const QByteArray &line : output.split('\n')) {
        if (line.startsWith("Inst ") || line.startsWith("Conf "))
            return packageError<QStringList>(
                QStringLiteral("other packages would be installed in its place"));
        if (!line.startsWith("Remv ") && !line.startsWith("Purg "))
            continue;
        const QString name = QString::fromUtf8(line.split(' ').value(1));
        if (!isDebianName(name))
            return packageError<QStringList>(
                QStringLiteral("the simulated removal gave an answer that cannot be read"));
        if (!names.contains(name))
            names.append(name);
    }
    return {names, {}};
}

} // namespace quillbay::platform
