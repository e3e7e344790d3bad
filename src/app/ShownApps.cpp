#include "app/ShownApps.h"

#include "library/AppFinder.h"
#include "library/SearchKey.h"
#include "library/SidebarSelection.h"

#include <QStringMatcher>
#include <QVarLengthArray>

#include <algorithm>

namespace quillbay {

QList<AppItem> appsMatching(const QList<AppItem> &apps, const QString &query)
{
    if (query.isEmpty())
        return apps;
    const QStringMatcher matcher(searchKey(query));
    QVarLengthArray<const AppItem *, 1024> found;
    for (const AppItem &app : apps) {
        if (matcher.indexIn(app.searchKey) >= 0)
            found.append(&app);
    }
    if (found.size() == apps.size())
        return apps;
    QList<AppItem> matching;
    matching.reserve(found.size());
    for (const AppItem *app : found)
        matching.append(*app);
    return matching;
}

QList<AppItem> withoutHidden(const QList<AppItem> &apps, const QSet<QString> &hidden)
{
    const auto isHidden = [&hidden](const AppItem &app) { return hidden.contains(app.path); };
    if (hidden.isEmpty() || std::none_of(apps.cbegin(), apps.cend(), isHidden))
        return apps;
    QList<AppItem> visible;
    visible.reserve(apps.size());
    std::remove_copy_if(apps.cbegin(), apps.cend(), std::back_inserter(visible), isHidden);
    return visible;
}

ShownApps::ShownApps(const AppFinder &finder)
    : m_finder(finder)
{
}

QList<AppItem> ShownApps::list(const SidebarSelection *selection, const QString &query) const
{
    const bool inHidden = selection && selection->which() == SidebarSelection::Case::hidden;
    if (inHidden) {
        const QList<AppItem> hidden = m_finder.getHiddenApps();
        return query.isEmpty() ? hidden : appsMatching(m_finder.getSortedApps(hidden), query);
    }
    if (!query.isEmpty())
        return appsMatching(sortedVisible(), query);
    return selection ? selected(*selection) : sortedVisible();
}

QList<AppItem> ShownApps::selected(const SidebarSelection &selection) const
{
    const auto visible = [this](const QList<AppItem> &apps) {
        return withoutHidden(apps, m_finder.hiddenAppPaths());
    };
    switch (selection.which()) {
    case SidebarSelection::Case::allApps:
    case SidebarSelection::Case::hidden:
        break;
    case SidebarSelection::Case::recents:
        return visible(m_finder.recentApps());
    case SidebarSelection::Case::favorites:
        return visible(m_finder.favoriteApps());
    case SidebarSelection::Case::newlyAdded:
        return visible(m_finder.newlyAddedApps());
    case SidebarSelection::Case::folder: {
        const QList<AppFolder> &folders = m_finder.folders();
        const auto current = std::find(folders.cbegin(), folders.cend(), *selection.folder());
        return current == folders.cend() ? QList<AppItem>() : visible(m_finder.getAppsInFolder(*current));
    }
    case SidebarSelection::Case::category: {
        QList<AppItem> members;
        for (const AppItem &app : m_finder.apps()) {
            if (app.category == selection.categoryName() && !m_finder.hiddenAppPaths().contains(app.path))
                members.append(app);
        }
        return members;
    }
    }
    return sortedVisible();
}

const QList<AppItem> &ShownApps::sortedVisible() const
{
    const AppSortOption option = m_finder.allAppsSortOption();
    const bool sameOrder = m_apps.isSharedWith(m_finder.apps()) && m_option == option &&
                           (option != AppSortOption::recentlyUsed || m_recents == m_finder.recentApps());
    if (!sameOrder) {
        m_apps = m_finder.apps();
        m_recents = m_finder.recentApps();
        m_option = option;
        m_sorted = m_finder.getSortedApps(m_apps);
    }
    // What is left out of a sorted list leaves it sorted: hiding needs no sort.
    if (!sameOrder || m_hidden != m_finder.hiddenAppPaths()) {
        m_hidden = m_finder.hiddenAppPaths();
        m_visible = withoutHidden(m_sorted, m_hidden);
    }
    return m_visible;
}

} // namespace quillbay
