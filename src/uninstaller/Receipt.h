#pragma once

#include "uninstaller/DeletionMethod.h"
#include "uninstaller/FileIdentity.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace quillbay {

/// One thing that was removed.
struct RemovalRecord
{
    QString displayName;
    QByteArray path; ///< Where it was.
    DeletionMethod method = DeletionMethod::Trash;
    bool isElevated = false; ///< With the administrator's rights.
    qint64 bytes = 0;
    QDateTime when;    ///< To the millisecond.
    FileIdentity file; ///< What it is now, in the Trash; without meaning for what is gone for good.

    bool operator==(const RemovalRecord &) const = default;
};

/// What one run of removals did, in the order it was done.
struct Receipt
{
    QList<RemovalRecord> records;

    bool operator==(const Receipt &) const = default;
};

/// One line of JSON, without the line end. Paths are written as `file:` URLs, so that every byte comes back.
QByteArray encodeRecord(const RemovalRecord &record);
/// Nothing for a line that is none, such as the last one of a file whose writer was killed.
std::optional<RemovalRecord> decodeRecord(const QByteArray &line);

} // namespace quillbay
