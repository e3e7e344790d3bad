#pragma once

#include "uninstaller/AppResidualFile.h"
#include "uninstaller/DeletionMethod.h"
#include "uninstaller/PackageQuestion.h"
#include "uninstaller/PutBack.h"
#include "uninstaller/Receipt.h"

#include <QSet>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace quillbay {

class PackageAdapter;
struct UninstallerServices;

struct DeletionResult
{
    int removedCount = 0;
    qint64 freedBytes = 0;
    QStringList errors;            ///< One for each row that stays, for the user.
    QSet<QByteArray> removedPaths; ///< Every row of one of them is gone.
    QSet<QString> removedPackages; ///< References.
    Receipt receipt;
};

/// The user's answer. Blocks until it is there; false where nobody answers any more.
using AskForPackage = std::function<bool(const PackageQuestion &question)>;

/// Removes the rows in their order: paths as `removeItems` does, protected ones refused; packages, by either
/// method, through their manager, after it said what would go and `ask` was answered with yes.
///
/// Once `stop` is requested it ends after the item at hand. Blocks. Thread: any but the main one.
DeletionResult deleteRows(const QList<AppResidualFile> &rows, DeletionMethod method,
                          const UninstallerServices &services, const PackageAdapter &packages,
                          const AskForPackage &ask, const std::stop_token &stop);

/// `putBack` with these services.
PutBackResult putBackRows(const Receipt &receipt, const UninstallerServices &services,
                          const std::stop_token &stop);

/// What is said when a deletion removed nothing.
QString nothingRemovedText(const QStringList &errors);

} // namespace quillbay
