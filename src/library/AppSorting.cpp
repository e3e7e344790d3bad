#include "library/AppSorting.h"

#include "foundation/CollationKey.h"

#include <QHash>

#include <algorithm>
#include <map>
#include <numeric>
#include <vector>

namespace quillbay {

namespace {

using Order = std::vector<size_t>; ///< Places in the list, in the order in which to take them.

bool isBefore(const AppItem &a, const AppItem &b)
{
    return a.sortKey < b.sortKey;
}

Order byName(const QList<AppItem> &list)
{
    if (std::is_sorted(list.cbegin(), list.cend(), isBefore)) {
        Order order(size_t(list.size()));
        std::iota(order.begin(), order.end(), size_t(0));
        return order;
    }
    std::vector<QByteArrayView> keys;
    keys.reserve(size_t(list.size()));
    for (const AppItem &app : list)
        keys.emplace_back(app.sortKey);
    return CollationKey::sortedOrder(keys);
}

Order byNameDescending(const QList<AppItem> &list)
{
    Order order = byName(list);
    std::reverse(order.begin(), order.end());
    for (auto run = order.begin(); run != order.end();) {
        const auto end = std::find_if(run, order.end(), [&](size_t place) {
            return list[qsizetype(place)].sortKey != list[qsizetype(*run)].sortKey;
        });
        std::reverse(run, end);
        run = end;
    }
    return order;
}

Order byCategory(const QList<AppItem> &list)
{
    const CollationKey::Maker key;
    std::map<QByteArray, Order> shelves;
    QHash<QString, Order *> shelfOf;
    for (qsizetype i = 0; i < list.size(); ++i) {
        Order *&shelf = shelfOf[list[i].category];
        if (!shelf)
            shelf = &shelves[key(list[i].category)];
        shelf->push_back(size_t(i));
    }
    Order order;
    order.reserve(size_t(list.size()));
    for (const auto &[category, places] : shelves)
        order.insert(order.end(), places.begin(), places.end());
    return order;
}

Order byUse(const QList<AppItem> &list, const QSet<QString> &recentURLs)
{
    Order order = byName(list);
    std::stable_partition(order.begin(), order.end(), [&](size_t place) {
        return recentURLs.contains(list[qsizetype(place)].absoluteString());
    });
    return order;
}

Order orderOf(const QList<AppItem> &list, AppSortOption option, const QSet<QString> &recentURLs)
{
    switch (option) {
    case AppSortOption::nameAscending:
        return byName(list);
    case AppSortOption::nameDescending:
        return byNameDescending(list);
    case AppSortOption::category:
        return byCategory(list);
    case AppSortOption::recentlyUsed:
        return byUse(list, recentURLs);
    }
    Q_UNREACHABLE();
}

} // namespace

QList<AppItem> sortedApps(const QList<AppItem> &list, AppSortOption option, const QSet<QString> &recentURLs)
{
    const Order order = orderOf(list, option, recentURLs);
    if (std::is_sorted(order.begin(), order.end()))
        return list;
    QList<AppItem> sorted;
    sorted.reserve(list.size());
    for (const size_t place : order)
        sorted.append(list[qsizetype(place)]);
    return sorted;
}

} // namespace quillbay
