#pragma once

#include "platform/FullDiskAccess.h"

#include <QByteArray>
#include <QString>

namespace quillbay::platform {

/// Full access, except in a flatpak that was not given the host's files or the home folder, to read and
/// write. The file that tells is made when a flatpak starts, so a grant shows in the next start alone.
class FlatpakFileAccess final : public FullDiskAccess
{
public:
    explicit FlatpakFileAccess(const QString &infoFile = QStringLiteral("/.flatpak-info"));

    bool hasAccess() const override;
    /// Opens the program's own page in the software centre, where there is one: permissions are there.
    void openSystemSettings() override;

private:
    const QString m_infoFile;
};

/// What such a file says: the `filesystems` of its `Context`. An entry with `:ro` gives too little, one with
/// `!` takes away.
bool hasHostFiles(const QByteArray &flatpakInfo);

} // namespace quillbay::platform
