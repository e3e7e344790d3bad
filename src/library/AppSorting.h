#pragma once

#include "library/AppItem.h"
#include "library/AppSortOption.h"

#include <QList>
#include <QSet>
#include <QString>

namespace quillbay {

/// A stable sort; names are compared by `AppItem::sortKey`, categories by the collation of the program's
/// locale, case ignored.
///
/// - `nameAscending`, `nameDescending`: by name; equal names keep their order in both.
/// - `category`: by category alone, so that the order within one is that of `list`.
/// - `recentlyUsed`: the applications whose URL is in `recentURLs` first, then the others, each by name: how
///   recent one is does not count.
///
/// A list that is in order already is returned as it is, uncopied, after one pass of comparisons.
QList<AppItem> sortedApps(const QList<AppItem> &list, AppSortOption option, const QSet<QString> &recentURLs);

} // namespace quillbay
