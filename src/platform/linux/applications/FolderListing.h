#pragma once

#include "platform/linux/applications/ApplicationEnvironment.h"
#include "platform/linux/applications/BoundedFile.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillbay::platform {

/// Some files of one folder that a scan has to look at: what one worker takes at a time.
struct ScanBatch
{
    enum class Content {
        Entries,      ///< Desktop entries.
        Applications, ///< Bundles and images.
    };
    struct Name
    {
        uint32_t at; ///< Where the name begins in `text`; a zero byte ends it.
        BoundedFile::Kind kind;
    };

    std::string folder; ///< Absolute, with a slash at its end, valid UTF-8.
    Content content = Content::Entries;
    std::vector<Name> names;
    std::string text;
};

/// Lists everything that may be an application, in scan order, without opening a file, and hands it to `take`
/// batch by batch, so that reading can begin meanwhile:
/// - of the bundle folders the direct children that end in ".app" (exactly) and do not begin with a dot, and
/// of the
///   user's also those that end in ".AppImage";
/// - of the entry folders, recursively, what ends in ".desktop", a folder's own files before its subfolders'.
/// Of
///   the files of one desktop file id (path below the folder, `/` as `-`) only the first: a later one is
///   shadowed even where the first is damaged or hidden, which is how a user takes an entry away.
///
/// Names that are not UTF-8 are passed over: no `QString` can hold them. Every folder is read once per entry
/// folder, however many links lead there, and not below a depth of 32. What cannot be listed is passed over.
///
/// Returns the subfolders of entry folders that were read, as they were reached, `MostSubfolders` at most.
QStringList listApplications(const ApplicationEnvironment &environment,
                             const std::function<void(ScanBatch &&)> &take);

/// Watching all of them takes a fraction of the watches that the system grants a user.
inline constexpr qsizetype MostSubfolders = 256;

} // namespace quillbay::platform
