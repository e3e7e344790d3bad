#include "library/FolderOrder.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <limits>

namespace quillbay {

namespace {

bool goesBefore(const AppFolder &a, const AppFolder &b)
{
    if (a.isPinned != b.isPinned)
        return a.isPinned;
    if (a.sortOrder != b.sortOrder)
        return a.sortOrder < b.sortOrder;
    return a.createdAt > b.createdAt;
}

QList<AppFolder> foldersIn(const QList<AppFolder> &folders, const std::optional<QUuid> &parentID,
                           const QSet<QUuid> &hidden)
{
    QList<AppFolder> result;
    std::copy_if(folders.cbegin(), folders.cend(), std::back_inserter(result), [&](const AppFolder &folder) {
        return folder.parentFolderID == parentID && !hidden.contains(folder.id);
    });
    return result;
}

} // namespace

void sortFolders(QList<AppFolder> &folders)
{
    if (!std::is_sorted(folders.cbegin(), folders.cend(), goesBefore))
        std::stable_sort(folders.begin(), folders.end(), goesBefore);
}

std::int64_t nextSortOrder(const QList<AppFolder> &folders)
{
    const auto last =
        std::max_element(folders.cbegin(), folders.cend(),
                         [](const AppFolder &a, const AppFolder &b) { return a.sortOrder < b.sortOrder; });
    if (last == folders.cend())
        return 0;
    return last->sortOrder == std::numeric_limits<std::int64_t>::max() ? last->sortOrder
                                                                       : last->sortOrder + 1;
}

QList<AppFolder> rootFolders(const QList<AppFolder> &folders, const QSet<QUuid> &hidden)
{
    return foldersIn(folders, std::nullopt, hidden);
}

QList<AppFolder> childFolders(const QList<AppFolder> &folders, const QUuid &parentID,
                              const QSet<QUuid> &hidden)
{
    return foldersIn(folders, parentID, hidden);
}

void renumber(QList<AppFolder> &folders, const QList<AppFolder> &inOrder)
{
    QHash<QUuid, qsizetype> places;
    for (qsizetype i = 0; i < inOrder.size(); ++i)
        places.insert(inOrder[i].id, i);
    for (AppFolder &folder : folders)
        folder.sortOrder = places.value(folder.id, folder.sortOrder);
}

} // namespace quillbay
