#include "library/AppFinder.h"

namespace quillbay {

QList<AppItem> AppFinder::searchApps(const QString &) const
{
    return {};
}
QList<AppItem> AppFinder::getSearchSuggestions(const QString &) const
{
    return {};
}
QList<AppItem> AppFinder::getRecentAppsForSearch() const
{
    return {};
}

} // namespace quillbay
