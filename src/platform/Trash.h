#pragma once

#include "platform/FileStamp.h"

#include <QByteArray>

#include <optional>

namespace quillbay::platform {

/// Something in the Trash.
struct TrashedFile
{
    QByteArray file; ///< Where it lies now.
    QByteArray info; ///< The record of where it came from, a file of its own.

    bool operator==(const TrashedFile &) const = default;
};

/// A name held in the Trash for a file that is about to come.
struct TrashReservation
{
    FileResult result; ///< Occupied: the name is taken.
    TrashedFile place;
};

/// The desktop's Trash. Nothing in here ever deletes what was put into it.
///
/// Paths are absolute, in the file system's own bytes. Thread: any but the main one; blocks.
class Trash
{
public:
    virtual ~Trash() = default;

    /// Moves the file or folder to the Trash, the desktop's own way. When that fails the file is where it
    /// was.
    virtual FileResult moveToTrash(const QByteArray &path) const = 0;

    /// Takes `name` in the user's own Trash for what now lies at `origin`: writes its record, exclusively and
    /// first, so that nothing is ever in the Trash without one. The folders are made if need be.
    virtual TrashReservation reserve(const QByteArray &name, const QByteArray &origin) const = 0;

    /// Gives a reservation up: removes the record, unless the file has come after all. Also takes the record
    /// of what was taken out of the Trash. False where the record stays though it should not.
    virtual bool release(const TrashedFile &place) const = 0;

    /// The file that was at `origin` and is `file`, by its record: in the user's own Trash, or in that of a
    /// file system that `origin` lies on. The device is not compared, since its number changes between two
    /// starts of a machine.
    virtual std::optional<TrashedFile> find(const QByteArray &origin, const FileStamp &file) const = 0;
};

} // namespace quillbay::platform
