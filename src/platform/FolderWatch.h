#pragma once

#include <QObject>
#include <QStringList>

namespace quillbay::platform {

/// Tells when something is added to, removed from, renamed or rewritten in a folder.
///
/// Thread: lives on the thread it was made on; `changed` is sent there.
class FolderWatch : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Replaces the watched folders. A folder that does not exist is skipped. Subfolders are not watched.
    /// Returns the number of folders now watched. Where the system's limit is reached, the rest is looked at
    /// twice a minute instead and counts as watched.
    virtual int watch(const QStringList &folders) = 0;

Q_SIGNALS:
    /// Something changed in `folder`. Single events are not to be trusted: read the folder again.
    void changed(const QString &folder);
};

} // namespace quillbay::platform
