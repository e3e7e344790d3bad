#include "app/ShownApps.h"

#include "library/AppFinder.h"
#include "library/SearchKey.h"
#include "library/SidebarSelection.h"

#include <QStringMatcher>

#include <algorithm>

namespace quillbay {

QList<AppItem> appsMatching(const QList<AppItem> &apps, const QString &query)
{
    if (query.isEmpty())
        return apps;
    const QStringMatcher matcher(searchKey(query));
    QList<AppItem> matching;
    for (const AppItem &app : apps) {
        if (matcher.indexIn(app.searchKey) >= 0)
            matching.append(app);
    }
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
        return appsMatching(base().sorted, query);
    return selection ? selected(*selection) : base().sorted;
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
        for (const AppItem &app : base().visible) {
            if (app.category == selection.categoryName())
                members.append(app);
        }
        return members;
    }
    }
    return base().sorted;
}

const ShownApps::Base &ShownApps::base() const
{
    const AppSortOption option = m_finder.allAppsSortOption();
    const bool sameApps =
        m_base.apps.isSharedWith(m_finder.apps()) && m_base.hidden == m_finder.hiddenAppPaths();
    const bool sameOrder = m_base.option == option &&
                           (option != AppSortOption::recentlyUsed || m_base.recents == m_finder.recentApps());
    if (!sameApps || !sameOrder) {
        m_base.apps = m_finder.apps();
        m_base.hidden = m_finder.hiddenAppPaths();
        m_base.recents = m_finder.recentApps();
        m_base.option = option;
        m_base.visible = withoutHidden(m_base.apps, m_base.hidden);
        m_base.sorted = m_finder.getSortedApps(m_base.visible);
    }
    return m_base;
}

} // namespace quillbay
