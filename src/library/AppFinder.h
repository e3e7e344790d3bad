#pragma once

#include "foundation/ObservableObject.h"
#include "library/AppFolder.h"
#include "library/AppIndex.h"
#include "library/AppItem.h"
#include "library/AppSortOption.h"
#include "library/FileItem.h"
#include "library/FolderCache.h"
#include "library/FolderListWriter.h"
#include "library/GridItemIdentifier.h"
#include "library/LibrarySurroundings.h"
#include "library/NewlyAdded.h"
#include "library/ScannedLibrary.h"

#include <QList>
#include <QSet>
#include <QThreadPool>
#include <QTimer>

#include <atomic>

namespace quillbay {

namespace platform {
class ApplicationSource;
struct RecentDocument;
} // namespace platform

/// The application library: what is installed, and the order that the user has brought into it.
///
/// One instance lives for the whole program. Its state is touched on the main thread only; reading the disk
/// happens on a pool of its own, which works on values and hands the finished list over in one step. Nothing
/// here reports an error: what cannot be read is left out, what is stored and cannot be understood is empty.
///
/// **Announcements.** Every published value is announced before it changes (see `ObservableObject`): who
/// recomputes from `objectWillChange` sees the state before the change. Every public operation that changes
/// something therefore ends with `sendResult`, one more announcement after which the state stays as it is,
/// and the scan's hand-over ends by clearing `isScanning`, which is one as well. The loads are steps of these
/// two and of the change of workspace, which ends so too; they themselves announce their assignment only.
/// What is stored, and under which keys, is in `LibrarySurroundings.h`.
class AppFinder : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY appsChanged)

public:
    using Surroundings = LibrarySurroundings;

    /// Loads the hidden sets. Nothing is scanned yet.
    explicit AppFinder(const Surroundings &surroundings, QObject *parent = nullptr);
    /// Waits for scans under way: they work on the source.
    ~AppFinder() override;

    // Scan and watch.

    /// All applications found, in the locale's order of their names; equal names keep their scan order.
    const QList<AppItem> &apps() const { return m_library.apps; }
    bool isEmpty() const { return m_library.apps.isEmpty(); }
    /// Finds applications of `apps` by path and by URL.
    const AppIndex &index() const { return m_library.index; }
    /// True from the start of a scan to the end of its hand-over.
    bool isScanning() const { return m_isScanning; }

    /// Reads all folders on a worker and publishes on the main thread. May be called from any thread. Two
    /// scans can overlap; the last to finish wins.
    void scanApps();
    /// Watches the application folders and scans again when one changes: once, `rescanDelay` after the last
    /// of a burst of changes. Main thread, once, after the first `scanApps`.
    void startMonitoring();
    /// The edge, in device pixels, at which the grid shows icons. From now on they are fetched ahead: those
    /// of all applications known, and after each scan those of what it found. Until then, and at 0, nothing
    /// is.
    void setIconPixelSize(int edge);
    /// Milliseconds of silence in the application folders before a rescan.
    static constexpr int rescanDelay = 1000;

    // Recents, favourites and sorting (AppFinderLists.cpp).

    const QList<AppItem> &recentApps() const { return m_recentApps; }
    const QList<AppItem> &favoriteApps() const { return m_favoriteApps; }
    AppSortOption allAppsSortOption() const { return m_allAppsSortOption; }
    /// Does not store it: `saveSortOption` does.
    void setAllAppsSortOption(AppSortOption option);
    /// Puts the application at the front of the recents, of which `mostRecents` are kept.
    void addToRecents(const AppItem &app);
    /// Appends it to the favourites, or removes it.
    void toggleFavorite(const AppItem &app);
    /// By what is stored: right also for a favourite that is not installed any more.
    bool isFavorite(const AppItem &app) const;
    void loadRecents();
    void loadFavorites();
    /// A sorted copy, in the order of `allAppsSortOption`. Stable.
    QList<AppItem> getSortedApps(const QList<AppItem> &list) const;
    void saveSortOption();
    void loadSortOption();
    static constexpr int mostRecents = 7;

    // Newly added (AppFinderNewlyAdded.cpp).

    /// Applications of the last 30 days, the newest first.
    const QList<AppItem> &newlyAddedApps() const { return m_newlyAddedApps; }

    // Folder tree (AppFinderFolders.cpp). A folder given to an operation is a copy of which only the `id`
    // counts: the operation works on the entry with it, and does nothing where there is none.

    /// In folder order: pinned first, then by `sortOrder`, then the newer first. A new folder stands in front
    /// until the next sort.
    const QList<AppFolder> &folders() const { return m_folders; }
    /// Replaces the list as it is, unsorted and unsaved.
    void setFolders(const QList<AppFolder> &folders);
    void createFolder(const QString &name, const QString &icon, const QString &color,
                      const std::optional<QUuid> &parentFolderID = std::nullopt);
    void renameFolder(const AppFolder &folder, const QString &newName);
    void togglePinFolder(const AppFolder &folder);
    void setFolderColor(const AppFolder &folder, const QString &color);
    void setFolderIcon(const AppFolder &folder, const QString &icon);
    void addAppToFolder(const AppItem &app, const AppFolder &folder);
    void removeAppFromFolder(const AppItem &app, const AppFolder &folder);
    /// Both by the move rule (`moveElements`): offsets into the members, or into `getRootFolders`.
    void reorderAppsInFolder(const AppFolder &folder, const QList<qsizetype> &from, qsizetype to);
    void reorderFolders(const QList<qsizetype> &from, qsizetype to);
    /// Folders without a parent, hidden ones left out.
    QList<AppFolder> getRootFolders() const;
    QList<AppFolder> getChildFolders(const QUuid &parentID) const;
    /// Members of the given copy that are installed, in its order.
    QList<AppItem> getAppsInFolder(const AppFolder &folder) const;
    void saveFolders();
    void loadFolders();

    // Unified grid order (AppFinderGridOrder.cpp).

    /// The stored arrangement: neither complete nor free of what is gone. The same list, shared, while the
    /// same is stored.
    QList<GridItemIdentifier> getUnifiedGridOrder() const;
    /// Moves within `currentItems` by the move rule and stores the whole; a folder's `sortOrder` becomes its
    /// place among all cells. The folders are not sorted anew.
    void reorderUnifiedItems(const QList<qsizetype> &from, qsizetype to,
                             const QList<GridItemIdentifier> &currentItems);

    // Ranked search (AppFinderSearch.cpp).

    /// Applications that are not hidden and whose name or category contains the query: exact names, then
    /// names that begin with it, then the rest, each band by name. Nothing for an empty query.
    QList<AppItem> searchApps(const QString &query) const;
    /// The first 8 of `searchApps`.
    QList<AppItem> getSearchSuggestions(const QString &query) const;
    /// The first 6 of `recentApps` that are not hidden.
    QList<AppItem> getRecentAppsForSearch() const;

    // Hidden applications and folders, the same in every workspace (AppFinderHidden.cpp).

    const QSet<QString> &hiddenAppPaths() const { return m_hiddenAppPaths; }
    const QSet<QUuid> &hiddenFolderIDs() const { return m_hiddenFolderIDs; }
    void loadHiddenApps();
    void loadHiddenFolders();
    void hideApp(const AppItem &app);
    void unhideApp(const AppItem &app);
    void hideFolder(const AppFolder &folder);
    void unhideFolder(const AppFolder &folder);
    /// Hidden applications that are installed, in the order of `apps`.
    QList<AppItem> getHiddenApps() const;

    // Recent documents (AppFinderRecentFiles.cpp).

    /// Documents used in the last three days, the last used first, at most 30, with the icons of their kinds.
    /// Made anew by each query.
    const QList<FileItem> &recentFiles() const { return m_recentFiles; }
    /// Starts a query, which ends the one before; the list follows later.
    void fetchRecentFiles();

Q_SIGNALS:
    void appsChanged();
    void isScanningChanged();
    void recentAppsChanged();
    void favoriteAppsChanged();
    void foldersChanged();
    void newlyAddedAppsChanged();
    void allAppsSortOptionChanged();
    void hiddenAppPathsChanged();
    void hiddenFolderIDsChanged();
    void recentFilesChanged();
    /// A scan's list has been handed over; `apps` holds it. Sent once per scan, after `isScanning` fell.
    void scanFinished();

private:
    void handOver(ScannedLibrary found);
    void reloadWorkspace();
    /// Once, after the first scan: the folders of the other workspaces, so that the first switch to one finds
    /// them decoded. One at a time, on a worker.
    void decodeFoldersAhead();
    void decodeFoldersOf(QStringList keys);
    /// One more announcement, for who recomputed before the change.
    void sendResult() { Q_EMIT objectWillChange(); }
    void prefetchIcons() const;
    void scheduleRescan();
    void rescan();
    void setIsScanning(bool scanning);
    /// On the scan's worker, with a look into the preferences of its own.
    void readNewlyAdded(ScannedLibrary &library) const;
    void adoptNewlyAdded();
    void updateNewlyAddedApps();
    void saveFirstSeen();
    void saveNewlyAdded();
    void loadNewlyAdded();
    void setAppHidden(const QString &path, bool hidden);
    void setFolderHidden(const QUuid &id, bool hidden);
    /// Changes the entry with that `id`, publishes and saves the list; false where there is none.
    bool changeFolder(QUuid id, const std::function<void(AppFolder &)> &change);
    void publishSortedFolders();
    void updateUnifiedGridOrderFromCurrentState();
    void processRecentFiles(const QList<platform::RecentDocument> &documents);
    /// The installed applications of a stored list of URLs, in its order.
    QList<AppItem> appsOfURLs(const QStringList &urls) const;

    Surroundings m_surroundings;
    const QString m_preferencesPath; ///< Empty where they live in memory: no worker sees them then.
    QThreadPool m_pool;
    QTimer m_rescanTimer;
    ScannedLibrary m_library;
    QList<AppItem> m_recentApps;
    QList<AppItem> m_favoriteApps;
    QList<AppFolder> m_folders;
    FolderCache m_folderCache;
    FolderListWriter m_folderWriter;
    QList<FileItem> m_recentFiles;
    QList<AppItem> m_newlyAddedApps;
    std::atomic_int m_recordVersion = 0; ///< Of the record of first sights, as this object changes it.
    NewlyAdded m_newlyAdded; ///< The last answer, kept while it holds: it is asked at every switch.
    AppSortOption m_allAppsSortOption = AppSortOption::nameAscending;
    QSet<QString> m_hiddenAppPaths;
    QSet<QUuid> m_hiddenFolderIDs;
    struct ParsedOrder
    {
        std::optional<QStringList> texts;
        QList<GridItemIdentifier> cells;
    };
    mutable ParsedOrder m_parsedOrder; ///< The grid order last read: it is asked at every announcement.
    int m_iconPixelSize = 0;
    bool m_isScanning = false;
    bool m_isMonitoring = false;
    bool m_isDecodingAhead = false;
    int m_recentFilesQuery = 0;
};

/// Reads, keys and sorts: what a scan does on its worker. Any thread.
ScannedLibrary readApplications(const platform::ApplicationSource &source);

} // namespace quillbay
