#include "library/AppFinder.h"

#include "library/AppIconLoader.h"
#include "platform/ApplicationSource.h"
#include "platform/FolderWatch.h"

namespace quillbay {

AppFinder::AppFinder(const platform::ApplicationSource &source, platform::FolderWatch &watch, QObject *parent)
    : ObservableObject(parent)
    , m_source(source)
    , m_watch(watch)
{
    // Overlapping scans must not wait for each other: the later one sees more.
    m_pool.setMaxThreadCount(2);
    m_pool.setExpiryTimeout(1000);
    m_rescanTimer.setSingleShot(true);
    m_rescanTimer.setInterval(rescanDelay);
    m_rescanTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_rescanTimer, &QTimer::timeout, this, &AppFinder::rescan);
}

AppFinder::~AppFinder()
{
    m_rescanTimer.stop();
    m_pool.clear();
    m_pool.waitForDone();
}

void AppFinder::handOver(QList<AppItem> found)
{
    publish(m_apps, std::move(found), &AppFinder::appsChanged);
    prefetchIcons();
    setIsScanning(false);
    if (m_isMonitoring)
        m_watch.watch(m_source.folders());
    Q_EMIT scanFinished();
}

void AppFinder::setIconPixelSize(int edge)
{
    m_iconPixelSize = edge;
    prefetchIcons();
}

void AppFinder::prefetchIcons() const
{
    if (m_iconPixelSize <= 0 || m_apps.isEmpty())
        return;
    QStringList paths;
    paths.reserve(m_apps.size());
    for (const AppItem &app : m_apps)
        paths.append(app.path);
    AppIconLoader::prefetchIcons(paths, m_iconPixelSize);
}

void AppFinder::setIsScanning(bool scanning)
{
    publish(m_isScanning, scanning, &AppFinder::isScanningChanged);
}

} // namespace quillbay
