#include "app/QuillbayViewModel.h"

#include "foundation/Console.h"
#include "library/SearchKey.h"
#include "platform/ApplicationLauncher.h"

#include <QStringMatcher>

#include <algorithm>

namespace quillbay {

QuillbayViewModel::QuillbayViewModel(AppFinder &appFinder, platform::ApplicationLauncher &launcher,
                                     QObject *parent)
    : ObservableObject(parent)
    , m_appFinder(appFinder)
    , m_launcher(launcher)
{
    connect(&m_appFinder, &ObservableObject::objectWillChange, this, [this] {
        updateFilteredApps();
        Q_EMIT objectWillChange();
    });
    m_appFinder.scanApps();
    m_appFinder.startMonitoring();
    updateFilteredApps();
}

void QuillbayViewModel::setSearchQuery(const QString &query)
{
    if (query == m_searchQuery)
        return;
    publish(m_searchQuery, query, &QuillbayViewModel::searchQueryChanged);
    updateFilteredApps();
}

void QuillbayViewModel::setSearchFocusTrigger(bool trigger)
{
    if (trigger == m_searchFocusTrigger)
        return;
    publish(m_searchFocusTrigger, trigger, &QuillbayViewModel::searchFocusTriggerChanged);
}

void QuillbayViewModel::updateFilteredApps()
{
    const QList<AppItem> result = appsMatching(m_appFinder.apps(), m_searchQuery);
    const QList<AppItem> &shown = m_filteredApps.items();
    if (std::equal(result.cbegin(), result.cend(), shown.cbegin(), shown.cend(), looksSame))
        return;
    Q_EMIT objectWillChange();
    m_filteredApps.setItems(result);
}

void QuillbayViewModel::launchApp(const AppItem &app)
{
    open(app, nullptr);
}

void QuillbayViewModel::launchApp(const QString &path, QWindow *window)
{
    const QList<AppItem> &apps = m_appFinder.apps();
    const auto app =
        std::find_if(apps.cbegin(), apps.cend(), [&path](const AppItem &item) { return item.path == path; });
    if (app != apps.cend())
        open(*app, window);
}

void QuillbayViewModel::open(const AppItem &app, QWindow *window)
{
    platform::LaunchRequest request;
    request.path = app.path;
    request.window = window;
    m_launcher.launch(request, [name = app.name](const platform::LaunchResult &result) {
        if (result.outcome != platform::LaunchOutcome::Started)
            printLine(QStringLiteral("⚠️ Failed to launch %1: %2").arg(name, result.reason));
    });
}

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

} // namespace quillbay
