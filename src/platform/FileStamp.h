#pragma once

#include <QString>
#include <QtGlobal>

namespace quillbay::platform {

/// Which file is meant, links not followed: an operation that finds another one at its path leaves it alone.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    quint32 kind = 0; ///< The S_IFMT bits of its mode.

    bool operator==(const FileStamp &) const = default;
};

/// What came of an operation on one file.
struct FileResult
{
    enum class Outcome {
        Done,
        Missing,      ///< There is nothing at the path.
        Changed,      ///< There is another file than the one that was meant.
        Mounted,      ///< It is a mount point, or something is mounted in it.
        Occupied,     ///< There is something at the destination already.
        NotPermitted, ///< This user may not.
        Failed
    };
    Outcome outcome = Outcome::Done;
    QString description = {}; ///< The system's own words; empty when done.

    bool done() const { return outcome == Outcome::Done; }
};

} // namespace quillbay::platform
