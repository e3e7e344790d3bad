#pragma once

#include "platform/linux/packages/PackageAnswer.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// One installed rpm package.
struct RpmRecord
{
    QString name;
    QString id;         ///< Name, version, release and architecture: "foo-1.0-2.x86_64".
    QString listedName; ///< As in `RemovalPreview::packages`.
    qint64 installedBytes = 0;

    bool operator==(const RpmRecord &) const = default;
};

/// The format that `rpmRecords` reads.
inline constexpr char rpmRecordFormat[] = R"(%{NAME}\t%{VERSION}-%{RELEASE}\t%{ARCH}\t%{LONGSIZE}\n)";

/// Reads what `rpm --query` wrote; lines in another form ("file … is not owned by any package") are passed
/// over.
QList<RpmRecord> rpmRecords(const QByteArray &output);

/// Whether rpm reported an error of its own: then its "not owned" means nothing, for it says so as well where
/// it could not open its database.
bool hasRpmError(const QByteArray &errors);

/// Reads the complaint of `rpm --erase --test`: full names of the packages that need what is to go. An error
/// if it complains of anything else.
PackageAnswer<QStringList> rpmDependents(const QByteArray &errors);

} // namespace quillbay::platform
