#include "platform/linux/packages/RpmOutput.h"

#include "platform/linux/packages/PackageNames.h"
#include "platform/linux/packages/PackageTool.h"

#include <algorithm>

namespace quillbay::platform {

QList<RpmRecord> rpmRecords(const QByteArray &output)
{
    QList<RpmRecord> records;
    for (const QByteArray &line : output.split('\n')) {
        const QByteArrayList fields = line.split('\t');
        if (fields.size() != 4)
            continue;
        const QString name = QString::fromUtf8(fields[0]);
        const QString architecture = QString::fromUtf8(fields[2]);
        const RpmRecord record{name, name + u'-' + QString::fromUtf8(fields[1]) + u'.' + architecture,
                               listedName(PackageKind::Rpm, name, architecture),
                               std::max<qint64>(fields[3].toLongLong(), 0)};
        if (isRpmName(record.name) && isRpmName(record.id) && !records.contains(record))
            records.append(record);
    }
    return records;
}

bool hasRpmError(const QByteArray &errors)
{
    return errors.startsWith("error:") || errors.contains("\nerror:");
}

PackageAnswer<QStringList> rpmDependents(const QByteArray &errors)
{
    const QByteArray words = " is needed by (installed) ";
    QStringList dependents;
    for (const QByteArray &line : errors.split('\n')) {
        if (line.startsWith("error:") && line.trimmed() != "error: Failed dependencies:")
            return packageError<QStringList>(presentable(line));
        const qsizetype at = line.startsWith('\t') ? line.lastIndexOf(words) : -1;
        if (at < 0)
            continue;
        const QString id = QString::fromUtf8(line.mid(at + words.size()).trimmed());
        if (!isRpmName(id))
            return packageError<QStringList>(
                QStringLiteral("the simulated removal gave an answer that cannot be read"));
        if (!dependents.contains(id))
            dependents.append(id);
    }
    if (dependents.isEmpty())
        return packageError<QStringList>(
            PackageToolResult{PackageToolResult::End::Exited, 1, {}, errors}.problem());
    return {dependents, {}};
}

} // namespace quillbay::platform
