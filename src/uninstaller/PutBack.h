#pragma once

#include "uninstaller/Receipt.h"
#include "uninstaller/Removal.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace quillbay {

/// What did not come back.
struct PutBackFailure
{
    enum class Reason {
        Gone,     ///< It is no longer in the Trash.
        Occupied, ///< Something is where it was; that stays.
        Refused,  ///< The user may not write there, and elevation was refused or not possible.
        Failed
    };
    QByteArray path; ///< Where it was.
    Reason reason = Reason::Failed;
    QString message; ///< Begins with its name, for the user.
};

struct PutBackResult
{
    QList<QByteArray> restored; ///< Where they are again, in the order they came back.
    QList<PutBackFailure> left;
};

/// Puts what a receipt says went to the Trash, and is still there by its record, back where it was; the last
/// removed first, so that a folder is there before what was taken out of it. Folders that are missing on the
/// way are made. Nothing is overwritten. A place that the user may not write to is filled by an elevated
/// move.
///
/// Blocks, at times for as long as a person thinks. Thread: any but the main one.
PutBackResult putBack(const Receipt &receipt, const RemovalServices &services);

} // namespace quillbay
