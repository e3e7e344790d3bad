#pragma once

#include "uninstaller/FileIdentity.h"

#include <QByteArray>
#include <QString>

namespace quillbay {

/// One thing to be removed, as a scan found it and a person chose it.
struct RemovalItem
{
    QByteArray path;              ///< Absolute, without `.` and `..`; may lead through links.
    QString displayName;          ///< Begins each message about it.
    qint64 sizeBytes = 0;         ///< What its removal frees, as the scan counted.
    bool isUserDeletable = false; ///< Whether the user may remove it without elevation.
    FileIdentity identity;        ///< What the scan saw at the path: nothing else is ever removed there.
};

} // namespace quillbay
