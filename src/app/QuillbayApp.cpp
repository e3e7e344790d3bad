#include "app/QuillbayApp.h"

#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "foundation/Console.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationSource.h"
#include "platform/Biometrics.h"
#include "platform/FolderWatch.h"
#include "platform/GlobalHotkey.h"
#include "platform/IconSource.h"
#include "platform/Platform.h"
#include "platform/RecentDocuments.h"
#include "platform/WindowEffects.h"

#include <QQuickWindow>
#include <QTimer>

#include <chrono>
#include <cmath>

namespace quillbay {

namespace {

/// Edge of the icon on a tile, in device-independent pixels.
constexpr int tileIconEdge = 80;
/// From the first painted grid to the fetching of icons that it does not show.
constexpr std::chrono::seconds prefetchDelay(2);

} // namespace

QuillbayApp::QuillbayApp(platform::Platform &platform, platform::ApplicationService &service,
                         PreferenceStore &preferences, WorkspaceManager &workspaces,
                         NotificationCenter &notifications)
    : m_platform(platform)
    , m_service(service)
    , m_preferences(preferences)
    , m_notifications(notifications)
    , m_appFinder({*platform.applications, *platform.folderWatch, *platform.recentDocuments, *platform.icons,
                   preferences, workspaces, notifications})
    , m_viewModel(m_appFinder, *platform.launcher, *platform.biometrics, preferences)
{
}

QuillbayApp::~QuillbayApp() = default;

void QuillbayApp::finishLaunching(QQuickWindow &window, bool show)
{
    m_mainWindow = std::make_unique<MainWindow>(window, *m_platform.windowEffects);
    m_appDelegate = std::make_unique<AppDelegate>(AppDelegate::Surroundings{
        *m_mainWindow, m_preferences, m_notifications, m_service, *m_platform.hotkey});
    connect(&m_viewModel, &SecurityLock::returnToFrontRequested, m_mainWindow.get(), [this, &window] {
        // A window that the user has closed meanwhile stays closed.
        if (window.isVisible())
            m_mainWindow->bringForward({});
    });
    announceFirstGrid(window);
    m_appDelegate->applicationDidFinishLaunching(show);
}

void QuillbayApp::announceFirstGrid(const QQuickWindow &window)
{
    connect(
        &m_appFinder, &AppFinder::scanFinished, this,
        [this, &window] {
            m_mainWindow->whenPainted([this, &window] {
                printLine(QStringLiteral("🗂️ Showing %1 applications")
                              .arg(m_viewModel.filteredApps()->count()));
                // The icons of the first picture have the machine to themselves.
                QTimer::singleShot(prefetchDelay, this, [this, &window] {
                    fetchIconsFor(window);
                    connect(&window, &QWindow::screenChanged, this,
                            [this, &window] { fetchIconsFor(window); });
                });
            });
        },
        Qt::SingleShotConnection);
}

void QuillbayApp::fetchIconsFor(const QQuickWindow &window)
{
    m_appFinder.setIconPixelSize(int(std::lround(tileIconEdge * window.effectiveDevicePixelRatio())));
}

} // namespace quillbay
