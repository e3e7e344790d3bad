#pragma once

#include "foundation/ObservableObject.h"
#include "library/AppItem.h"

#include <QList>
#include <QThreadPool>
#include <QTimer>

namespace quillbay {

namespace platform {
class ApplicationSource;
class FolderWatch;
} // namespace platform

/// The application library: what is installed, kept up to date.
///
/// One instance lives for the whole program. Its state is touched on the main thread only; reading the disk
/// happens on a pool of its own, which works on values and hands the finished list over in one step. Nothing
/// here reports an error: what cannot be read is left out.
///
/// Every published value is announced before it changes (see `ObservableObject`).
class AppFinder : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY appsChanged)

public:
    /// The source and the watch must outlive this object.
    AppFinder(const platform::ApplicationSource &source, platform::FolderWatch &watch,
              QObject *parent = nullptr);
    /// Waits for scans under way: they work on the source.
    ~AppFinder() override;

    /// All applications found, in the locale's order of their names; equal names keep their scan order.
    const QList<AppItem> &apps() const { return m_apps; }
    bool isEmpty() const { return m_apps.isEmpty(); }
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

Q_SIGNALS:
    void appsChanged();
    void isScanningChanged();
    /// A scan's list has been handed over; `apps` holds it. Sent once per scan, after `isScanning` fell.
    void scanFinished();

private:
    void handOver(QList<AppItem> found);
    void prefetchIcons() const;
    void scheduleRescan();
    void rescan();
    void setIsScanning(bool scanning);

    const platform::ApplicationSource &m_source;
    platform::FolderWatch &m_watch;
    QThreadPool m_pool;
    QTimer m_rescanTimer;
    QList<AppItem> m_apps;
    int m_iconPixelSize = 0;
    bool m_isScanning = false;
    bool m_isMonitoring = false;
};

/// Reads, keys and sorts: what a scan does on its worker. Any thread.
QList<AppItem> readApplications(const platform::ApplicationSource &source);

} // namespace quillbay
