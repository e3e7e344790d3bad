#pragma once

#include "platform/FileRemoval.h"
#include "platform/Trash.h"
#include "uninstaller/AdminPrivileges.h"
#include "uninstaller/DeletionMethod.h"
#include "uninstaller/Receipt.h"
#include "uninstaller/RemovalItem.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace quillbay {

/// What removing and putting back work with. All of it outlives the call.
struct RemovalServices
{
    const platform::FileRemoval &files;
    const platform::Trash &trash;
    AdminPrivileges &admin;
    QString receiptFolder; ///< See `ReceiptStore`.

    /// Refuses paths besides those that `RemovalGuard` refuses. Called with a path as given and again with
    /// its links resolved. Thread-safe.
    std::function<bool(const QByteArray &path)> isProtected = [](const QByteArray &) { return false; };
    std::function<QDateTime()> now = &QDateTime::currentDateTime;
    std::stop_token stop = {}; ///< Ends a run after the item at hand.
};

struct RemovalResult
{
    int removedCount = 0;
    qint64 freedBytes = 0;
    QStringList errors;             ///< One for each item that stays, for the user.
    QList<QByteArray> removedPaths; ///< Every row with one of these paths is gone.
    Receipt receipt;                ///< What was done, for `putBack`; also in the receipts' folder.
};

/// Removes the items, one at a time, in their order, and goes on past failures.
///
/// An item that is no longer there is passed over without a word, so the second of two equal ones does not
/// count. A protected one, one that has changed since the scan and one with a file system mounted in it are
/// left alone, with a message. For good: as the user where the user may and, if that fails, elevated; else
/// elevated at once. To the Trash: the desktop's own way, or, if that fails, by an elevated move into the
/// user's own Trash. A failing Trash never becomes a deletion.
///
/// Blocks until done, at times for as long as a person thinks. Thread: any but the main one.
RemovalResult removeItems(const QList<RemovalItem> &items, DeletionMethod method,
                          const RemovalServices &services);

} // namespace quillbay
