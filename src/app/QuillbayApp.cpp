#include "app/QuillbayApp.h"

#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "foundation/Console.h"
#include "library/AppIconLoader.h"
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

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace quillbay {

namespace {

/// Edge of the icon on a tile, in device-independent pixels.
constexpr int tileIconEdge = 80;
/// From the first painted grid to the fetching of icons that it does not show.
constexpr std::chrono::seconds prefetchDelay(2);
/// As many as a window of usual size shows.
constexpr int firstTiles = 48;

int tileIconPixels(qreal ratio)
{
    return int(std::lround(tileIconEdge * ratio));
}

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
    connect(&m_appFinder, &AppFinder::scanFinished, this, &QuillbayApp::firstScanFinished,
            Qt::SingleShotConnection);
}

QuillbayApp::~QuillbayApp() = default;

void QuillbayApp::finishLaunching(QQuickWindow &window, bool show, std::function<bool()> isRulerShowing)
{
    m_mainWindow = std::make_unique<MainWindow>(window, *m_platform.windowEffects);
    m_appDelegate = std::make_unique<AppDelegate>(
        AppDelegate::Surroundings{*m_mainWindow, m_preferences, m_notifications, m_service,
                                  *m_platform.hotkey, std::move(isRulerShowing)});
    connect(&m_viewModel, &SecurityLock::returnToFrontRequested, m_mainWindow.get(), [this, &window] {
        // A window that the user has closed meanwhile stays closed.
        if (window.isVisible())
            m_mainWindow->bringForward({});
    });
    connect(m_appDelegate.get(), &AppDelegate::urlOpened, this, &QuillbayApp::urlOpened);
    m_window = &window;
    if (m_hasScanned)
        announceFirstGrid();
    m_appDelegate->applicationDidFinishLaunching(show);
}

void QuillbayApp::firstScanFinished()
{
    m_hasScanned = true;
    if (m_window) {
        announceFirstGrid();
        return;
    }
    // The window is still being made. It will want these at once.
    QStringList paths;
    const AppListModel &apps = *m_viewModel.filteredApps();
    for (int row = 0; row < std::min(apps.count(), firstTiles); ++row)
        paths.append(apps.index(row).data(AppListModel::PathRole).toString());
    AppIconLoader::readAhead(paths, tileIconPixels(qGuiApp->devicePixelRatio()));
}

void QuillbayApp::announceFirstGrid()
{
    m_mainWindow->whenPainted([this] {
        printLine(QStringLiteral("🗂️ Showing %1 applications").arg(m_viewModel.filteredApps()->count()));
        // The icons of the first picture have the machine to themselves.
        QTimer::singleShot(prefetchDelay, this, [this] {
            fetchIcons();
            connect(m_window, &QWindow::screenChanged, this, &QuillbayApp::fetchIcons);
        });
    });
}

void QuillbayApp::fetchIcons()
{
    m_appFinder.setIconPixelSize(tileIconPixels(m_window->effectiveDevicePixelRatio()));
}

} // namespace quillbay
