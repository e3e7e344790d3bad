#include "library/GridOrder.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

/// FNV-1a over the code units: the same in every run and on every machine, unlike `qHash`.
quint32 stableHash(const QString &text)
{
    quint32 hash = 2166136261u;
    for (const QChar unit : text)
        hash = (hash ^ unit.unicode()) * 16777619u;
    return hash;
}

} // namespace

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
    QStringList fresh;
    for (const QString &category : categories) {
        if (existing.contains(GridItemIdentifier::category(category)))
            fresh.append(category);
    }
    std::sort(fresh.begin(), fresh.end(), [](const QString &a, const QString &b) {
        return std::pair(stableHash(a), QStringView(a)) < std::pair(stableHash(b), QStringView(b));
    });
    for (const QString &category : fresh)
        result.append(GridItemIdentifier::category(category));
    return result;
}

} // namespace quillbay
