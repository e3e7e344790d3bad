#pragma once

#include "library/AppFolder.h"
#include "library/GridItemIdentifier.h"

#include <QList>
#include <QSet>
#include <QString>

namespace quillbay {

/// The cells that the grid of all applications shows: what is left of the stored arrangement once stale and
/// repeated cells are dropped, before it the root folders that it does not have, in their order, and behind
/// it the categories that it does not have, by a hash of their names that is the same in every run: cards
/// that nobody has arranged stay where they were.
QList<GridItemIdentifier> unifiedGridItems(const QList<AppFolder> &rootFolders,
                                           const QSet<QString> &categories,
                                           const QList<GridItemIdentifier> &stored);

} // namespace quillbay
