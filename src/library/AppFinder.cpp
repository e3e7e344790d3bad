#include "library/AppFinder.h"

#include "foundation/NotificationCenter.h"
#include "library/AppIconLoader.h"
#include "platform/ApplicationSource.h"
#include "platform/FolderWatch.h"
#include "platform/RecentDocuments.h"
#include "workspaces/WorkspaceManager.h"

#include <QDateTime>

#include <utility>

namespace quillbay {

AppFinder::AppFinder(const Surroundings &surroundings, QObject *parent)
    : ObservableObject(parent)
    , m_surroundings(surroundings)
    , m_preferencesPath(surroundings.preferences.isInMemory() ? QString() : surroundings.preferences.path())
{
    if (!m_surroundings.now)
        m_surroundings.now = [] { return double(QDateTime::currentMSecsSinceEpoch()) / 1000; };
    // Overlapping scans must not wait for each other: the later one sees more.
    m_pool.setMaxThreadCount(2);
    m_pool.setExpiryTimeout(1000);
    m_rescanTimer.setSingleShot(true);
    m_rescanTimer.setInterval(rescanDelay);
    m_rescanTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_rescanTimer, &QTimer::timeout, this, &AppFinder::rescan);
    loadHiddenApps();
    loadHiddenFolders();
    connect(&m_surroundings.notifications, &NotificationCenter::quillbayWorkspaceChanged, this,
            &AppFinder::reloadWorkspace);
    connect(&m_surroundings.recentDocuments, &platform::RecentDocuments::gathered, this,
            &AppFinder::processRecentFiles);
    connect(&m_surroundings.recentDocuments, &platform::RecentDocuments::changed, this,
            &AppFinder::fetchRecentFiles);
}

AppFinder::~AppFinder()
{
    m_rescanTimer.stop();
    m_surroundings.recentDocuments.stop();
    m_pool.clear();
    m_pool.waitForDone();
}

void AppFinder::handOver(ScannedLibrary found)
{
    publish(m_library, std::move(found), &AppFinder::appsChanged);
    prefetchIcons();
    loadSortOption();
    adoptNewlyAdded();
    loadRecents();
    loadFavorites();
    loadFolders();
    fetchRecentFiles();
    setIsScanning(false);
    decodeFoldersAhead();
    if (m_isMonitoring)
        m_surroundings.folderWatch.watch(m_surroundings.applications.folders());
    Q_EMIT scanFinished();
}

void AppFinder::reloadWorkspace()
{
    loadSortOption();
    updateNewlyAddedApps();
    loadRecents();
    loadFavorites();
    loadFolders();
    loadNewlyAdded();
    sendResult();
}

void AppFinder::setIconPixelSize(int edge)
{
    m_iconPixelSize = edge;
    prefetchIcons();
}

void AppFinder::prefetchIcons() const
{
    if (m_iconPixelSize <= 0 || apps().isEmpty())
        return;
    QStringList paths;
    paths.reserve(apps().size());
    for (const AppItem &app : apps())
        paths.append(app.path);
    AppIconLoader::prefetchIcons(paths, m_iconPixelSize);
}

void AppFinder::decodeFoldersAhead()
{
    if (std::exchange(m_isDecodingAhead, true))
        return;
    QStringList keys;
    for (const Workspace &workspace : m_surroundings.workspaces.workspaces()) {
        if (workspace.id != m_surroundings.workspaces.activeWorkspaceID())
            keys.append(WorkspaceManager::key(QStringLiteral("AppFolders"), workspace.id));
    }
    decodeFoldersOf(keys);
}

void AppFinder::decodeFoldersOf(QStringList keys)
{
    if (keys.isEmpty())
        return;
    const QString key = keys.takeFirst();
    const QByteArray text = m_surroundings.preferences.data(key).value_or(QByteArray());
    m_pool.start([this, key, text, keys] {
        const Decoded<QList<AppFolder>> decoded = decodeFolders(text);
        const QList<AppFolder> *folders = decodedValue(decoded);
        QMetaObject::invokeMethod(
            this,
            [this, key, text, keys, folders = folders ? *folders : QList<AppFolder>()] {
                if (!text.isEmpty())
                    m_folderCache.remember(key, text, folders);
                decodeFoldersOf(keys);
            },
            Qt::QueuedConnection);
    });
}

void AppFinder::setIsScanning(bool scanning)
{
    publish(m_isScanning, scanning, &AppFinder::isScanningChanged);
}

} // namespace quillbay
