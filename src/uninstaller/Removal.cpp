#include "uninstaller/Removal.h"

#include "foundation/Console.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/RemovalGuard.h"
#include "uninstaller/TrashName.h"

#include <QUuid>

namespace quillbay {

namespace {

using platform::ElevationResult;
using platform::FileResult;
using platform::TrashReservation;

// How one item ended.
struct Ending
{
    enum class Kind { Removed, Skipped, Stays };
    Kind kind = Kind::Stays;
    QString reason = {};     // Stays
    bool isElevated = false; // Removed
    FileIdentity file = {};  // Removed to the Trash

    static Ending skipped() { return {Kind::Skipped}; }
    static Ending stays(const QString &reason) { return {Kind::Stays, reason}; }
    static Ending removed(bool isElevated, const FileIdentity &file)
    {
        return {Kind::Removed, {}, isElevated, file};
    }
};

QString changedReason()
{
    return QStringLiteral("It has changed since the scan and was left alone.");
}

QString mountedReason()
{
    return QStringLiteral("A file system is mounted there, so it was left alone.");
}

QString protectedReason()
{
    return QStringLiteral("This folder is protected and was left alone.");
}

platform::FileStamp stampOf(const FileIdentity &file)
{
    return {file.device, file.inode, file.kind};
}

// Why nobody is asked for elevation though the plain way failed; empty where it is worth asking.
QString finalReason(const FileResult &result)
{
    switch (result.outcome) {
    case FileResult::Outcome::Changed:
        return changedReason();
    case FileResult::Outcome::Mounted:
        return mountedReason();
    default:
        return {};
    }
}

class Removing
{
public:
    explicit Removing(const RemovalServices &services)
        : m_services(services)
        , m_guard(RemovalGuard::ofSession())
    {
    }

    Ending remove(const RemovalItem &item, DeletionMethod method) const
    {
        const auto found = FileIdentity::of(item.path);
        if (!found)
            return Ending::skipped();
        const QByteArray path = m_services.files.resolved(item.path);
        if (isProtected(item.path) || isProtected(path))
            return Ending::stays(protectedReason());
        if (m_services.files.holdsMount(path))
            return Ending::stays(mountedReason());
        if (*found != item.identity)
            return Ending::stays(changedReason());
        if (method == DeletionMethod::Trash)
            return moveToTrash(item, path);
        return item.isUserDeletable
                   ? deletePlainly(item, path)
                   : deleteElevated(item, path,
                                    QStringLiteral("Administrator access was denied or cancelled."));
    }

private:
    bool isProtected(const QByteArray &path) const
    {
        return m_guard.refuses(path) || m_services.isProtected(path);
    }

    Ending deletePlainly(const RemovalItem &item, const QByteArray &path) const
    {
        const FileResult result = m_services.files.remove(path, stampOf(item.identity));
        if (result.done())
            return Ending::removed(false, {});
        if (result.outcome == FileResult::Outcome::Missing)
            return Ending::skipped();
        if (const QString reason = finalReason(result); !reason.isEmpty())
            return Ending::stays(reason);
        return deleteElevated(item, path, result.description);
    }

    Ending deleteElevated(const RemovalItem &item, const QByteArray &path, const QString &reason) const
    {
        const ElevationResult result = m_services.admin.deleteWithAdminPrivileges(path, item.identity);
        if (result.outcome == ElevationResult::Outcome::Done)
            return Ending::removed(true, {});
        const bool isChanged = result.outcome == ElevationResult::Outcome::Changed;
        return Ending::stays(isChanged ? changedReason() : reason);
    }

    Ending moveToTrash(const RemovalItem &item, const QByteArray &path) const
    {
        const FileResult result = m_services.trash.moveToTrash(item.path);
        if (result.done())
            return Ending::removed(false, item.identity);
        if (result.outcome == FileResult::Outcome::Missing && !FileIdentity::of(item.path))
            return Ending::skipped();

        const TrashReservation taken = reserve(item.path);
        const QByteArray place =
            taken.result.done() ? m_services.files.resolved(taken.place.file) : QByteArray();
        if (place.isEmpty())
            return Ending::stays(result.description);
        const ElevationResult moved = m_services.admin.moveWithAdminPrivileges(path, place, item.identity);
        if (moved.outcome == ElevationResult::Outcome::Done)
            return Ending::removed(true, FileIdentity::of(place).value_or(item.identity));
        if (!m_services.trash.release(taken.place))
            printLine(QStringLiteral("⚠️ Failed to take a record back out of the Trash"));
        const bool isChanged = moved.outcome == ElevationResult::Outcome::Changed;
        return Ending::stays(isChanged ? changedReason() : result.description);
    }

    TrashReservation reserve(const QByteArray &path) const
    {
        const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
        const TrashReservation plain = m_services.trash.reserve(name, path);
        if (plain.result.done())
            return plain;
        return m_services.trash.reserve(uniqueTrashName(name, QUuid::createUuid()), path);
    }

    const RemovalServices &m_services;
    RemovalGuard m_guard;
};

} // namespace

RemovalResult removeItems(const QList<RemovalItem> &items, DeletionMethod method,
                          const RemovalServices &services)
{
    const Removing removing(services);
    ReceiptStore receipts(services.receiptFolder);
    RemovalResult result;
    for (const RemovalItem &item : items) {
        if (services.stop.stop_requested())
            break;
        const Ending ending = removing.remove(item, method);
        if (ending.kind == Ending::Kind::Stays)
            result.errors.append(item.displayName + QStringLiteral(": ") + ending.reason);
        if (ending.kind != Ending::Kind::Removed)
            continue;
        ++result.removedCount;
        result.freedBytes += item.sizeBytes;
        result.removedPaths.append(item.path);
        const RemovalRecord record{item.displayName, item.path,      method,     ending.isElevated,
                                   item.sizeBytes,   services.now(), ending.file};
        result.receipt.records.append(record);
        if (!receipts.append(record))
            printLine(QStringLiteral("⚠️ Failed to write the receipt of a removal"));
    }
    return result;
}

} // namespace quillbay
