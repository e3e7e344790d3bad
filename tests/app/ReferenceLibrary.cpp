#include "ReferenceLibrary.h"

#include "foundation/Uuid.h"

#include <algorithm>

namespace quillbay::testing {

ReferenceLibrary::Folder *ReferenceLibrary::folder(const QUuid &id)
{
    for (Folder &entry : folders) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

void ReferenceLibrary::sort()
{
    std::stable_sort(folders.begin(), folders.end(), [](const Folder &a, const Folder &b) {
        if (a.isPinned != b.isPinned)
            return a.isPinned;
        if (a.sortOrder != b.sortOrder)
            return a.sortOrder < b.sortOrder;
        return a.createdAt > b.createdAt;
    });
}

void ReferenceLibrary::reload()
{
    sortOption = storedSortOption;
    folders = current().stored;
    sort();
    firstSeen.removeIf([this](const auto &entry) { return !installed.contains(entry.key()); });
    for (const QString &app : apps()) {
        if (!firstSeen.contains(app))
            firstSeen.insert(app, now);
    }
    newlyAdded.clear();
    for (const QString &app : apps()) {
        if (firstSeen.value(app) >= now - 30 * 86400)
            newlyAdded.append(app);
    }
    std::stable_sort(newlyAdded.begin(), newlyAdded.end(), [this](const QString &a, const QString &b) {
        return firstSeen.value(a) > firstSeen.value(b) + 1;
    });
}

QStringList ReferenceLibrary::shown(const QStringList &stored) const
{
    QStringList list = stored;
    list.removeIf([this](const QString &app) { return !installed.contains(app); });
    return list;
}

QStringList ReferenceLibrary::sorted() const
{
    QStringList list = visible(apps());
    switch (sortOption) {
    case AppSortOption::nameAscending:
        break;
    case AppSortOption::nameDescending:
        std::reverse(list.begin(), list.end());
        break;
    case AppSortOption::category:
        std::stable_sort(list.begin(), list.end(), [this](const QString &a, const QString &b) {
            return installed.value(a) < installed.value(b);
        });
        break;
    case AppSortOption::recentlyUsed:
        std::stable_partition(list.begin(), list.end(),
                              [this](const QString &app) { return recents().contains(app); });
        break;
    }
    return list;
}

QStringList ReferenceLibrary::visible(const QStringList &list) const
{
    QStringList result = list;
    result.removeIf([this](const QString &app) { return hiddenApps.contains(app); });
    return result;
}

QList<ReferenceLibrary::Folder> ReferenceLibrary::roots() const
{
    QList<Folder> result = folders;
    result.removeIf([this](const Folder &entry) { return entry.parent || hiddenFolders.contains(entry.id); });
    return result;
}

QStringList ReferenceLibrary::arrangedGrid() const
{
    QStringList fresh;
    QStringList known;
    for (const Folder &entry : roots()) {
        known.append(QLatin1String("folder:") + uuidString(entry.id));
        if (!current().gridOrder.contains(known.last()))
            fresh.append(known.last());
    }
    for (const QString &category : installed)
        known.append(QLatin1String("category:") + category);
    QStringList placed = current().gridOrder;
    placed.removeIf([&known](const QString &cell) { return !known.contains(cell); });
    return fresh + placed;
}

QSet<QString> ReferenceLibrary::unplacedCategories() const
{
    QSet<QString> result;
    for (const QString &category : installed)
        result.insert(QLatin1String("category:") + category);
    for (const QString &cell : current().gridOrder)
        result.remove(cell);
    return result;
}

void ReferenceLibrary::createFolder(const QUuid &id, const QString &name, const std::optional<QUuid> &parent)
{
    Folder made{id, name, {}, false, parent, now, 0};
    for (const Folder &entry : std::as_const(folders))
        made.sortOrder = std::max(made.sortOrder, entry.sortOrder + 1);
    folders.prepend(made);
    save();
    sort();
}

void ReferenceLibrary::reorderFolders(qsizetype from, qsizetype to)
{
    QList<Folder> order = roots();
    moveOne(order, from, to);
    for (qsizetype i = 0; i < order.size(); ++i)
        folder(order[i].id)->sortOrder = i;
    save();
    sort();
}

void ReferenceLibrary::reorderGrid(QStringList cells, qsizetype from, qsizetype to)
{
    moveOne(cells, from, to);
    current().gridOrder = cells;
    for (Folder &entry : folders) {
        const qsizetype place = cells.indexOf(QLatin1String("folder:") + uuidString(entry.id));
        if (place >= 0)
            entry.sortOrder = place;
    }
    save();
}

void ReferenceLibrary::launch(const QString &app)
{
    QStringList &list = current().recents;
    list.removeAll(app);
    list.prepend(app);
    list = list.mid(0, 7);
}

} // namespace quillbay::testing
