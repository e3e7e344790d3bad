#pragma once

#include "app/AppListModel.h"
#include "app/CategoryListModel.h"
#include "app/GridListModel.h"
#include "app/KeyMonitor.h"
#include "app/SecurityLock.h"
#include "app/ShownApps.h"
#include "library/AppFinder.h"
#include "library/SidebarSelection.h"

#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <optional>

class QWindow;

namespace quillbay {

namespace platform {
class ApplicationLauncher;
}

/// The one object that every screen holds: what is selected and searched, what the grid therefore lists, and
/// the actions of the tiles and the sidebar. It owns no data: the library does.
///
/// **When it recomputes.** At each announcement of the library, at once: the library announces before its
/// value changes, so that one sees the state before the change, and the library's operations announce once
/// more when they are done. At each write of `selection` and `searchQuery`, after the value is stored. The
/// lists below are derived: nothing else assigns them, and a result that looks the same assigns nothing.
///
/// **The lock** of the hidden list comes from `SecurityLock`. Every selection but the hidden list closes that
/// list again; while it is locked, nothing here lists what is hidden.
///
/// Thread: main thread. One instance, from the start of the program to its end.
class QuillbayViewModel : public quillbay::SecurityLock // in full, for the type's description
{
    Q_OBJECT
    Q_PROPERTY(quillbay::AppFinder *appFinder READ appFinder CONSTANT)
    Q_PROPERTY(quillbay::AppListModel *filteredApps READ filteredApps CONSTANT)
    Q_PROPERTY(quillbay::CategoryListModel *groupedAppsByCategory READ groupedAppsByCategory CONSTANT)
    Q_PROPERTY(quillbay::GridListModel *unifiedGridItems READ unifiedGridItems CONSTANT)
    Q_PROPERTY(QString searchQuery READ searchQuery WRITE setSearchQuery NOTIFY searchQueryChanged)
    Q_PROPERTY(bool searchFocusTrigger READ searchFocusTrigger WRITE setSearchFocusTrigger NOTIFY
                   searchFocusTriggerChanged)
    Q_PROPERTY(
        bool showingAppPicker READ showingAppPicker WRITE setShowingAppPicker NOTIFY showingAppPickerChanged)
    /// Its path; empty for nobody, as is a path that is not in the library.
    Q_PROPERTY(QString appToUninstall READ appToUninstallPath WRITE setAppToUninstallPath NOTIFY
                   appToUninstallChanged)

public:
    /// Starts the first scan and the folder watch. The library and the services must outlive this object.
    QuillbayViewModel(AppFinder &appFinder, platform::ApplicationLauncher &launcher,
                      platform::Biometrics &biometrics, const PreferenceStore &preferences,
                      QObject *parent = nullptr);

    AppFinder *appFinder() const { return &m_appFinder; }

    /// What the sidebar shows. Nothing is a legal state, and lists as all applications do.
    const std::optional<SidebarSelection> &selection() const { return m_selection; }
    void setSelection(const std::optional<SidebarSelection> &selection);
    /// Text of the search field. Writing it recomputes the list before the call returns.
    QString searchQuery() const { return m_searchQuery; }
    void setSearchQuery(const QString &query);
    /// Each change asks the search field to take the keyboard; the value itself means nothing.
    bool searchFocusTrigger() const { return m_searchFocusTrigger; }
    void setSearchFocusTrigger(bool trigger);
    /// The sheet that adds applications to `folderForPicker`.
    bool showingAppPicker() const { return m_showingAppPicker; }
    void setShowingAppPicker(bool showing);
    const std::optional<AppFolder> &folderForPicker() const { return m_folderForPicker; }
    void setFolderForPicker(const std::optional<AppFolder> &folder);
    /// The tile being dragged; stays after the drag.
    const std::optional<AppItem> &draggedApp() const { return m_draggedApp; }
    void setDraggedApp(const std::optional<AppItem> &app);
    /// Whom the uninstaller is open for.
    const std::optional<AppItem> &appToUninstall() const { return m_appToUninstall; }
    void setAppToUninstall(const std::optional<AppItem> &app);
    QString appToUninstallPath() const { return m_appToUninstall ? m_appToUninstall->path : QString(); }
    void setAppToUninstallPath(const QString &path);

    /// What the grid lists: for a query every match whatever is selected (in the hidden list the matches
    /// among the hidden), else what is selected. A locked hidden list is empty.
    AppListModel *filteredApps() { return &m_filteredApps; }
    /// The same applications by category.
    CategoryListModel *groupedAppsByCategory() { return &m_groupedAppsByCategory; }
    /// The cells of the grid of all applications, folders and categories.
    GridListModel *unifiedGridItems() { return &m_unifiedGridItems; }
    /// Recomputes the first two; the cells follow the library alone.
    Q_INVOKABLE void updateFilteredApps();

    /// Opens an application and puts it among the recents, whatever becomes of the opening. A failure is
    /// printed; the user sees that nothing came.
    void launchApp(const AppItem &app);
    /// The same for the application with that path; an unknown path does nothing. `window` is the one clicked
    /// in.
    Q_INVOKABLE void launchApp(const QString &path, QWindow *window = nullptr);

    /// Both lead to the hidden list, which offers to set a password, unless there is one.
    void hideAppGlobally(const AppItem &app);
    void hideFolderGlobally(const AppFolder &folder);
    /// Removes the folder alone: its subfolders stay, without a place, and so does its place in the grid's
    /// stored order.
    void deleteFolder(const AppFolder &folder);
    /// All applications that are not members, in their order; without the hidden ones while these are locked.
    QList<AppItem> appsNotInFolder(const AppFolder &folder) const;
    /// Moves a member before the place of another: dragged forward it lands before it, dragged backward in
    /// its place.
    void moveFolderApp(const AppItem &app, const AppItem &target, const AppFolder &folder);
    void addAppToFolder(const AppItem &app, const AppFolder &folder);
    void removeAppFromFolder(const AppItem &app, const AppFolder &folder);
    /// Selects the first root folder whose name begins with the letter, or the next one where one of them is
    /// selected, round and round. False where there is none.
    bool handleFolderShortcut(const QString &letter);

    /// Milliseconds of silence after which a search counts as one.
    static constexpr int searchSilence = 2000;

Q_SIGNALS:
    void selectionChanged();
    void searchQueryChanged();
    void searchFocusTriggerChanged();
    void showingAppPickerChanged();
    void folderForPickerChanged();
    void draggedAppChanged();
    void appToUninstallChanged();
    /// Something happened that is worth counting: "App Launched" with "app_name", "Search Used" with "query".
    void eventHappened(const QString &name, const QVariantMap &properties);

private:
    void open(const AppItem &app, QWindow *window);
    void updateUnifiedGridItems();
    void afterHiding();

    AppFinder &m_appFinder;
    platform::ApplicationLauncher &m_launcher;
    ShownApps m_shownApps;
    std::optional<SidebarSelection> m_selection = SidebarSelection();
    QString m_searchQuery;
    bool m_searchFocusTrigger = false;
    bool m_showingAppPicker = false;
    std::optional<AppFolder> m_folderForPicker;
    std::optional<AppItem> m_draggedApp;
    std::optional<AppItem> m_appToUninstall;
    AppListModel m_filteredApps;
    CategoryListModel m_groupedAppsByCategory;
    GridListModel m_unifiedGridItems;
    QSet<QString> m_categories; ///< Of all applications.

    /// What `unifiedGridItems` was made of.
    struct GridSources
    {
        QList<AppItem> apps;
        QList<AppFolder> folders;
        QSet<QUuid> hiddenFolders;
        QList<GridItemIdentifier> order;
    };
    GridSources m_gridSources;
    QTimer m_searchPause;
    KeyMonitor m_keyMonitor;
};

} // namespace quillbay
