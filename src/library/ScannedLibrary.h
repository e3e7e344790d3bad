#pragma once

#include "library/AppIndex.h"
#include "library/AppItem.h"

#include <QList>

namespace quillbay {

/// What a scan hands over: the applications by name, and where to find each. A value; the two belong
/// together.
struct ScannedLibrary
{
    QList<AppItem> apps;
    AppIndex index;
};

} // namespace quillbay
