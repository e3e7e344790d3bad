#pragma once

#include "uninstaller/AppResidualFile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quillbay {

/// The package that an application came with, as its package manager knows it.
struct ApplicationOwner
{
    QString reference;   ///< See `AppResidualFile::packageReference`; not empty.
    QString displayName; ///< "firefox-esr, Debian package".
    qint64 sizeBytes = 0;
    /// Whether the package manager can be asked to remove it.
    bool isRemovable = false;
    /// Without it there would be no system, or no desktop.
    bool isEssential = false;
    /// Names that stand for the application where an entry bears one as its whole name, whatever the case.
    QStringList packageNames;
};

/// What is asked of whoever knows the package managers; either may be missing, which means that there are
/// none. Called on the scan's worker, where they may take their time; what they hold must be good for as long
/// as a scan may run.
struct PackageQueries
{
    /// The package of an application, by the path of an application scan's result; nothing if it has none.
    /// Where that cannot be found out the answer is an owner that is not removable, since an application that
    /// may be a package's must not go by its path.
    std::function<std::optional<ApplicationOwner>(const QByteArray &path)> ownerOf = {};
    /// Those of the paths that came with a package, of whatever application.
    std::function<QList<QByteArray>(const QList<QByteArray> &paths)> ofPackages = {};
};

/// Whether the current user may delete what is at the path: the folder that holds it is writable and not
/// sticky in another's name, and a folder is writable itself. False where there is nothing.
bool isDeletableFile(const QByteArray &path);

/// A row for a path, as it is now, with a fresh id; it is named by its last part.
AppResidualFile residualFile(const QByteArray &path, ResidualCategory category, qint64 sizeBytes);

/// The row that stands for the package of an application. It is no path.
AppResidualFile packageRow(const ApplicationOwner &owner);

} // namespace quillbay
