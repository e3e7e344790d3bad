#pragma once

#include "library/AppFolder.h"
#include "library/GridItemIdentifier.h"

#include <QList>
#include <QSet>
#include <QString>

namespace quillbay {

/// The cells that the grid of all applications shows: what is left of the stored arrangement once stale and
/// repeated cells are dropped, before it the root folders that it does not have, in their order, and behind
/// it the categories that it does not have, in the set's own order, which no two runs of the program share.
QList<GridItemIdentifier> unifiedGridItems(const QList<AppFolder> &rootFolders,
                                           const QSet<QString> &categories,
                                           const QList<GridItemIdentifier> &stored);

} // namespace quillbay
