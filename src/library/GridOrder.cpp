#include "library/GridOrder.h"

namespace quillbay {

QList<GridItemIdentifier> unifiedGridItems(const QList<AppFolder> &rootFolders,
                                           const QSet<QString> &categories,
                                           const QList<GridItemIdentifier> &stored)
{
    QSet<GridItemIdentifier> existing;
    for (const AppFolder &folder : rootFolders)
        existing.insert(GridItemIdentifier::folder(folder.id));
    for (const QString &category : categories)
        existing.insert(GridItemIdentifier::category(category));

    QList<GridItemIdentifier> arranged;
    for (const GridItemIdentifier &cell : stored) {
        if (existing.remove(cell))
            arranged.append(cell);
    }
    // What exists still is what the arrangement does not have.
    QList<GridItemIdentifier> result;
    for (const AppFolder &folder : rootFolders) {
        if (const auto cell = GridItemIdentifier::folder(folder.id); existing.contains(cell))
            result.append(cell);
    }
    result.append(arranged);
    for (const QString &category : categories) {
        if (const auto cell = GridItemIdentifier::category(category); existing.contains(cell))
            result.append(cell);
    }
    return result;
}

} // namespace quillbay
