#include "library/AppFinder.h"

namespace quillbay {

void AppFinder::setAllAppsSortOption(AppSortOption) {}
void AppFinder::addToRecents(const AppItem &) {}
void AppFinder::toggleFavorite(const AppItem &) {}
bool AppFinder::isFavorite(const AppItem &) const
{
    return false;
}
void AppFinder::loadRecents() {}
void AppFinder::loadFavorites() {}
QList<AppItem> AppFinder::getSortedApps(const QList<AppItem> &list) const
{
    return list;
}
void AppFinder::saveSortOption() {}
void AppFinder::loadSortOption() {}
QList<AppItem> AppFinder::appsOfURLs(const QStringList &) const
{
    return {};
}

} // namespace quillbay
