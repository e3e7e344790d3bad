#include "library/AppFinder.h"
#include "library/AppSearch.h"

namespace quillbay {

namespace {

constexpr qsizetype mostSuggestions = 8;
constexpr qsizetype mostRecentSuggestions = 6;

} // namespace

QList<AppItem> AppFinder::searchApps(const QString &query) const
{
    if (query.isEmpty())
        return {};
    // The members of folders are looked for among these applications: searching them as well finds nothing
    // more.
    AppSearch search(query);
    std::vector<const AppItem *> matching;
    for (qsizetype i = 0; i < apps().size(); ++i) {
        const AppItem &app = apps()[i];
        if (search.matches(app) && index().ofPath(app.path) == i && !m_hiddenAppPaths.contains(app.path))
            matching.push_back(&app);
    }
    return search.ranked(matching);
}

QList<AppItem> AppFinder::getSearchSuggestions(const QString &query) const
{
    return searchApps(query).mid(0, mostSuggestions);
}

QList<AppItem> AppFinder::getRecentAppsForSearch() const
{
    QList<AppItem> visible = m_recentApps;
    visible.removeIf([this](const AppItem &app) { return m_hiddenAppPaths.contains(app.path); });
    return visible.mid(0, mostRecentSuggestions);
}

} // namespace quillbay
