#include "uninstaller/Deletion.h"

#include "foundation/ByteCount.h"
#include "foundation/Console.h"
#include "platform/DesktopWording.h"
#include "uninstaller/PackageAdapter.h"
#include "uninstaller/ProtectedPaths.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/UninstallerServices.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

using platform::RemovalOutcome;
using platform::RemovalPreview;

RemovalServices removalServices(const UninstallerServices &services, const std::stop_token &stop)
{
    RemovalServices result{services.files, services.trash, services.admin, services.receiptFolder};
    result.stop = stop;
    return result;
}

// A row of nothing gets an identity that no file has: what came there since is left alone.
RemovalItem itemOf(const AppResidualFile &row)
{
    return {row.path, row.displayName, row.sizeBytes, row.isUserDeletable,
            row.identity.value_or(FileIdentity{})};
}

QString refusal(const QString &reason)
{
    return reason.isEmpty() ? QStringLiteral("It cannot be removed.")
                            : QStringLiteral("It cannot be removed: %1.").arg(reason);
}

QString failure(const platform::RemovalResult &result)
{
    switch (result.outcome) {
    case RemovalOutcome::Declined:
    case RemovalOutcome::NotAuthorised:
        return QStringLiteral("Administrator access was denied or cancelled.");
    case RemovalOutcome::Changed:
        return QStringLiteral("Other packages would be removed now than those that were approved.");
    case RemovalOutcome::Refused:
        return refusal(result.text);
    case RemovalOutcome::Removed:
    case RemovalOutcome::Failed:
        break;
    }
    return result.text.isEmpty() ? QStringLiteral("It could not be removed.") : result.text;
}

class Deleting
{
public:
    Deleting(DeletionMethod method, const UninstallerServices &services, const PackageAdapter &packages,
             const AskForPackage &ask, const std::stop_token &stop)
        : m_method(method)
        , m_services(services)
        , m_packages(packages)
        , m_ask(ask)
        , m_stop(stop)
        , m_receipts(services.receiptFolder)
    {
    }

    DeletionResult run(const QList<AppResidualFile> &rows)
    {
        QList<RemovalItem> paths;
        for (const AppResidualFile &row : rows) {
            if (!row.isPackage()) {
                paths.append(itemOf(row));
                continue;
            }
            removePaths(std::exchange(paths, {}));
            if (m_stop.stop_requested())
                break;
            removePackage(row);
        }
        removePaths(paths);
        return std::move(m_result);
    }

private:
    void removePaths(const QList<RemovalItem> &items)
    {
        if (items.isEmpty())
            return;
        RemovalServices services = removalServices(m_services, m_stop);
        services.isProtected = [folders = ProtectedPaths(*m_services.roots)](const QByteArray &path) {
            return folders.contains(path);
        };
        const RemovalResult removed = removeItems(items, m_method, services);
        m_result.removedCount += removed.removedCount;
        m_result.freedBytes = addByteCounts(m_result.freedBytes, removed.freedBytes);
        m_result.errors += removed.errors;
        m_result.removedPaths += QSet(removed.removedPaths.begin(), removed.removedPaths.end());
        m_result.receipt.records += removed.receipt.records;
    }

    void removePackage(const AppResidualFile &row)
    {
        const RemovalPreview preview = m_packages.simulate(row.packageReference);
        if (preview.verdict != RemovalPreview::Verdict::Allowed)
            return report(row, refusal(preview.reason));
        const bool isApproved = m_ask({row.displayName, preview.packages, preview.data});
        if (m_stop.stop_requested())
            return;
        if (!isApproved)
            return report(row, QStringLiteral("Its removal was declined."));
        bool isElevated = false;
        platform::ElevatedRun elevated;
        if (m_services.runElevated) {
            elevated = [&](const QStringList &command) {
                isElevated = true;
                return m_services.runElevated(command);
            };
        }
        const auto result = m_packages.remove(row.packageReference, preview.packages, elevated);
        if (result.outcome != RemovalOutcome::Removed)
            return report(row, failure(result));
        ++m_result.removedCount;
        m_result.freedBytes = addByteCounts(m_result.freedBytes, row.sizeBytes);
        m_result.removedPackages.insert(row.packageReference);
        const RemovalRecord record{row.displayName,
                                   {},
                                   DeletionMethod::Permanent,
                                   isElevated,
                                   row.sizeBytes,
                                   QDateTime::currentDateTime(),
                                   FileIdentity{}};
        m_result.receipt.records.append(record);
        if (!m_receipts.append(record))
            printLine(QStringLiteral("⚠️ Failed to write the receipt of a removal"));
    }

    void report(const AppResidualFile &row, const QString &reason)
    {
        m_result.errors.append(row.displayName + QStringLiteral(": ") + reason);
    }

    const DeletionMethod m_method;
    const UninstallerServices &m_services;
    const PackageAdapter &m_packages;
    const AskForPackage &m_ask;
    const std::stop_token m_stop;
    ReceiptStore m_receipts;
    DeletionResult m_result;
};

} // namespace

DeletionResult deleteRows(const QList<AppResidualFile> &rows, DeletionMethod method,
                          const UninstallerServices &services, const PackageAdapter &packages,
                          const AskForPackage &ask, const std::stop_token &stop)
{
    return Deleting(method, services, packages, ask, stop).run(rows);
}

PutBackResult putBackRows(const Receipt &receipt, const UninstallerServices &services,
                          const std::stop_token &stop)
{
    return putBack(receipt, removalServices(services, stop));
}

QString nothingRemovedText(const QStringList &errors)
{
    if (errors.isEmpty())
        return QStringLiteral("No items were selected or all selected files were already deleted.");
    const bool isPermissionAlone = std::all_of(errors.begin(), errors.end(), [](const QString &message) {
        return message.contains(QLatin1String("No permission"));
    });
    if (isPermissionAlone)
        return platform::desktopWording(
            QStringLiteral("All selected files are owned by macOS or require administrator access to delete. "
                           "These files are shown with a lock icon and have been automatically deselected."));
    return errors.mid(0, 3).join(u'\n');
}

} // namespace quillbay
