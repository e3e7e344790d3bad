#pragma once

#include <QString>
#include <QStringList>

namespace quillbay {

/// What a user is asked before a package goes.
struct PackageQuestion
{
    QString displayText;  ///< "firefox-esr, Debian package".
    QStringList packages; ///< All that would be removed: the package itself, then the others.
    QString data;         ///< A folder that would go too; empty: none.

    bool operator==(const PackageQuestion &) const = default;
};

} // namespace quillbay
