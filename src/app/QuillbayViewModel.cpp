#include "app/QuillbayViewModel.h"

#include "foundation/Console.h"
#include "library/GridOrder.h"
#include "platform/ApplicationLauncher.h"

#include <algorithm>

namespace quillbay {

QuillbayViewModel::QuillbayViewModel(AppFinder &appFinder, platform::ApplicationLauncher &launcher,
                                     platform::Biometrics &biometrics, const PreferenceStore &preferences,
                                     QObject *parent)
    : SecurityLock(biometrics, preferences, parent)
    , m_appFinder(appFinder)
    , m_launcher(launcher)
    , m_shownApps(appFinder)
    , m_keyMonitor([this](const QString &letter) { return handleFolderShortcut(letter); })
{
    connect(&m_appFinder, &ObservableObject::objectWillChange, this, [this] {
        updateFilteredApps();
        updateUnifiedGridItems();
        Q_EMIT objectWillChange();
    });
    // The first to hear of it: screens that open find the list filled, and closed ones leave nothing behind.
    connect(this, &SecurityLock::isHiddenUnlockedChanged, this, &QuillbayViewModel::updateFilteredApps);
    connect(this, &SecurityLock::securityChanged, this, &QuillbayViewModel::updateFilteredApps);
    m_appFinder.scanApps();
    m_appFinder.startMonitoring();
    m_searchPause.setSingleShot(true);
    m_searchPause.setInterval(searchSilence);
    connect(&m_searchPause, &QTimer::timeout, this, [this] {
        if (!m_searchQuery.isEmpty())
            Q_EMIT eventHappened(QStringLiteral("Search Used"), {{QStringLiteral("query"), m_searchQuery}});
    });
    updateFilteredApps();
    updateUnifiedGridItems();
}

void QuillbayViewModel::setSelection(const std::optional<SidebarSelection> &selection)
{
    const bool isHidden = selection && selection->which() == SidebarSelection::Case::hidden;
    if (isHidden)
        enterHiddenList();
    else if (leaveHiddenList())
        updateFilteredApps(); // empty when the next list comes up
    publish(m_selection, selection, &QuillbayViewModel::selectionChanged);
    announceLeaving();
    updateFilteredApps();
}

void QuillbayViewModel::setSearchQuery(const QString &query)
{
    if (query == m_searchQuery)
        return;
    publish(m_searchQuery, query, &QuillbayViewModel::searchQueryChanged);
    updateFilteredApps();
    m_searchPause.start();
}

void QuillbayViewModel::setSearchFocusTrigger(bool trigger)
{
    if (trigger != m_searchFocusTrigger)
        publish(m_searchFocusTrigger, trigger, &QuillbayViewModel::searchFocusTriggerChanged);
}

void QuillbayViewModel::setShowingAppPicker(bool showing)
{
    if (showing != m_showingAppPicker)
        publish(m_showingAppPicker, showing, &QuillbayViewModel::showingAppPickerChanged);
}

void QuillbayViewModel::setFolderForPicker(const std::optional<AppFolder> &folder)
{
    publish(m_folderForPicker, folder, &QuillbayViewModel::folderForPickerChanged);
}

void QuillbayViewModel::setDraggedApp(const std::optional<AppItem> &app)
{
    publish(m_draggedApp, app, &QuillbayViewModel::draggedAppChanged);
}

void QuillbayViewModel::setAppToUninstall(const std::optional<AppItem> &app)
{
    publish(m_appToUninstall, app, &QuillbayViewModel::appToUninstallChanged);
}

void QuillbayViewModel::setAppToUninstallPath(const QString &path)
{
    const qsizetype index = m_appFinder.index().ofPath(path);
    if (index >= 0)
        setAppToUninstall(AppItem(m_appFinder.apps()[index]));
    else
        setAppToUninstall({});
}

void QuillbayViewModel::updateFilteredApps()
{
    const SidebarSelection *selection = m_selection ? &*m_selection : nullptr;
    const bool isClosed = selection && selection->which() == SidebarSelection::Case::hidden && isLocked();
    const QList<AppItem> result = isClosed ? QList<AppItem>() : m_shownApps.list(selection, m_searchQuery);
    if (!m_filteredApps.shows(result)) {
        Q_EMIT objectWillChange();
        m_filteredApps.setItems(result);
        m_groupedAppsByCategory.setApps(result);
    }
}

void QuillbayViewModel::updateUnifiedGridItems()
{
    const QList<GridItemIdentifier> order = m_appFinder.getUnifiedGridOrder();
    const bool sameApps = m_gridSources.apps.isSharedWith(m_appFinder.apps());
    if (sameApps && m_gridSources.folders.isSharedWith(m_appFinder.folders()) &&
        m_gridSources.order.isSharedWith(order) &&
        m_gridSources.hiddenFolders == m_appFinder.hiddenFolderIDs())
        return;
    if (!sameApps) {
        m_categories.clear();
        for (const AppItem &app : m_appFinder.apps())
            m_categories.insert(app.category);
    }
    m_gridSources = {m_appFinder.apps(), m_appFinder.folders(), m_appFinder.hiddenFolderIDs(), order};
    m_unifiedGridItems.setItems(
        quillbay::unifiedGridItems(m_appFinder.getRootFolders(), m_categories, order));
}

} // namespace quillbay
