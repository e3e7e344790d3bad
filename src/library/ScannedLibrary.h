#pragma once

#include "library/AppIndex.h"
#include "library/AppItem.h"
#include "library/NewlyAdded.h"

#include <QList>

namespace quillbay {

/// What a scan hands over: the applications by name, where to find each, and which of them are new. A value;
/// its parts belong together.
struct ScannedLibrary
{
    QList<AppItem> apps;
    AppIndex index;

    /// Made from what was stored when the scan had ended.
    NewlyAdded newlyAdded;
    bool isRecordStored = false; ///< `newlyAdded.firstSeen` is what is stored.
    bool areURLsStored = false;  ///< So are `newlyAdded.urls`.
    int recordVersion = -1;      ///< Of the record that it was made from; -1 where none was looked at.
};

} // namespace quillbay
