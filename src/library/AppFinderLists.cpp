#include "library/AppFinder.h"
#include "library/AppSorting.h"
#include "workspaces/WorkspaceManager.h"

namespace quillbay {

namespace {

const QString recentsKey = QStringLiteral("recentApps");
const QString favoritesKey = QStringLiteral("favoriteApps");
const QString sortOptionKey = QStringLiteral("AllAppsSortOption");

QStringList storedURLs(const AppFinder::Surroundings &surroundings, const QString &baseKey)
{
    return surroundings.preferences.stringArray(surroundings.workspaces.key(baseKey)).value_or(QStringList());
}

void storeURLs(AppFinder::Surroundings &surroundings, const QString &baseKey, const QStringList &urls)
{
    surroundings.preferences.setStringArray(surroundings.workspaces.key(baseKey), urls);
}

} // namespace

void AppFinder::addToRecents(const AppItem &app)
{
    QStringList urls = storedURLs(m_surroundings, recentsKey);
    urls.removeAll(app.absoluteString());
    urls.prepend(app.absoluteString());
    storeURLs(m_surroundings, recentsKey, urls.mid(0, mostRecents));
    loadRecents();
    sendResult();
}

void AppFinder::toggleFavorite(const AppItem &app)
{
    QStringList urls = storedURLs(m_surroundings, favoritesKey);
    if (urls.removeAll(app.absoluteString()) == 0)
        urls.append(app.absoluteString());
    storeURLs(m_surroundings, favoritesKey, urls);
    loadFavorites();
    sendResult();
}

bool AppFinder::isFavorite(const AppItem &app) const
{
    return storedURLs(m_surroundings, favoritesKey).contains(app.absoluteString());
}

void AppFinder::loadRecents()
{
    publish(m_recentApps, appsOfURLs(storedURLs(m_surroundings, recentsKey)), &AppFinder::recentAppsChanged);
}

void AppFinder::loadFavorites()
{
    publish(m_favoriteApps, appsOfURLs(storedURLs(m_surroundings, favoritesKey)),
            &AppFinder::favoriteAppsChanged);
}

QList<AppItem> AppFinder::appsOfURLs(const QStringList &urls) const
{
    QList<AppItem> found;
    for (const QString &url : urls) {
        const qsizetype place = index().ofURL(url);
        if (place >= 0)
            found.append(apps()[place]);
    }
    return found;
}

QList<AppItem> AppFinder::getSortedApps(const QList<AppItem> &list) const
{
    QSet<QString> recentURLs;
    for (const AppItem &app : m_recentApps)
        recentURLs.insert(app.absoluteString());
    return sortedApps(list, m_allAppsSortOption, recentURLs);
}

void AppFinder::setAllAppsSortOption(AppSortOption option)
{
    publish(m_allAppsSortOption, option, &AppFinder::allAppsSortOptionChanged);
    sendResult();
}

void AppFinder::saveSortOption()
{
    m_surroundings.preferences.setString(sortOptionKey, rawValue(m_allAppsSortOption));
}

void AppFinder::loadSortOption()
{
    const auto option = appSortOption(m_surroundings.preferences.string(sortOptionKey).value_or(QString()));
    if (option)
        publish(m_allAppsSortOption, *option, &AppFinder::allAppsSortOptionChanged);
}

} // namespace quillbay
