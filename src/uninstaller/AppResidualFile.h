#pragma once

#include "uninstaller/FileIdentity.h"
#include "uninstaller/ResidualCategory.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace quillbay {

/// One thing that belongs to an application: a file, a folder or a link, or else a package.
///
/// A link is a row of its own, with its own size and identity: what it leads to is no part of it.
struct AppResidualFile
{
    QUuid id; ///< Fresh for each row of each scan: two rows may stand for one path.
    /// The file system's own bytes, absolute; empty for a package.
    QByteArray path;
    /// For whoever asks the package manager, who alone knows its form; empty for a path. A package's files
    /// are never removed by path.
    QString packageReference;
    ResidualCategory category = ResidualCategory::other;
    QString displayName;  ///< For display only: bytes that are no UTF-8 are replaced in it.
    qint64 sizeBytes = 0; ///< As the row was made.
    bool isSelected = false;
    /// Whether the current user may delete it without elevation, as the row was made. Rows start selected
    /// where this is true; nothing links the two later.
    bool isUserDeletable = false;
    /// Which file the path led to as the row was made: what another file of that path would not be. Nothing
    /// for a package and where there was no file.
    std::optional<FileIdentity> identity;

    bool isPackage() const { return !packageReference.isEmpty(); }
    /// Every byte of the path survives in it; empty for a package.
    QUrl url() const;

    bool operator==(const AppResidualFile &) const = default;
    friend size_t qHash(const AppResidualFile &file, size_t seed = 0) noexcept
    {
        return qHash(file.id, seed);
    }
};

} // namespace quillbay

Q_DECLARE_TYPEINFO(quillbay::AppResidualFile, Q_RELOCATABLE_TYPE);
