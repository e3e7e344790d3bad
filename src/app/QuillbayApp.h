#pragma once

#include "app/QuillbayViewModel.h"
#include "library/AppFinder.h"

#include <QObject>

#include <functional>
#include <memory>

class QQuickWindow;

namespace quillbay {

class AppDelegate;
class MainWindow;
class NotificationCenter;
class PreferenceStore;
class WorkspaceManager;

namespace platform {
class ApplicationService;
struct Platform;
} // namespace platform

/// The application: owns the library and the view model for the life of the process, and the delegate from
/// the moment there is a window. It names no screen: whoever makes the window hands it over.
///
/// Thread: main thread.
class QuillbayApp : public QObject
{
    Q_OBJECT

public:
    /// Creates the library and the view model, which starts the first scan: early, so that the disk is read
    /// while the window is being made. All arguments must outlive this object.
    QuillbayApp(platform::Platform &platform, platform::ApplicationService &service,
                PreferenceStore &preferences, WorkspaceManager &workspaces,
                NotificationCenter &notifications);
    ~QuillbayApp() override;

    QuillbayViewModel &viewModel() { return m_viewModel; }

    /// The window exists; it must outlive the event loop. Shows it unless `show` is false. `isRulerShowing`
    /// is asked when the program is opened again.
    void finishLaunching(QQuickWindow &window, bool show, std::function<bool()> isRulerShowing = {});

Q_SIGNALS:
    /// A URL was opened into the program. Those of the start come while it finishes launching.
    void urlOpened(const QString &url);

private:
    void firstScanFinished();
    void announceFirstGrid();
    void fetchIcons();

    platform::Platform &m_platform;
    platform::ApplicationService &m_service;
    PreferenceStore &m_preferences;
    NotificationCenter &m_notifications;
    AppFinder m_appFinder;
    QuillbayViewModel m_viewModel;
    bool m_hasScanned = false;
    QQuickWindow *m_window = nullptr;
    std::unique_ptr<MainWindow> m_mainWindow;
    std::unique_ptr<AppDelegate> m_appDelegate;
};

} // namespace quillbay
