#include "analytics/AnalyticsManager.h"
#include "analytics/Marlpost.h"
#include "app/QuillbayApp.h"
#include "foundation/Console.h"
#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "library/AppIconLoader.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationService.h"
#include "platform/ApplicationSource.h"
#include "platform/Biometrics.h"
#include "platform/ColorSampler.h"
#include "platform/DeviceIdentity.h"
#include "platform/Elevation.h"
#include "platform/FileRemoval.h"
#include "platform/FolderWatch.h"
#include "platform/FullDiskAccess.h"
#include "platform/GlobalHotkey.h"
#include "platform/IconSource.h"
#include "platform/PackageManager.h"
#include "platform/Platform.h"
#include "platform/RecentDocuments.h"
#include "platform/ResidualRoots.h"
#include "platform/Trash.h"
#include "platform/WindowEffects.h"
#include "tools/Tools.h"
#include "ui/Screens.h"
#include "ui/vocabulary/Theme.h"
#include "uninstaller/AdminPrivileges.h"
#include "uninstaller/ReceiptStore.h"
#include "uninstaller/Uninstaller.h"
#include "workspaces/WorkspaceManager.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace quillbay;

namespace {

/// The exit status of a service that the machine does not have (sysexits.h).
constexpr int unavailable = 69;

struct Arguments
{
    bool serviceOnly =
        false; ///< The desktop's message bus started the program: no window until it is asked for.
    QStringList urls;
};

Arguments parse(int argc, char **argv)
{
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--gapplication-service") == 0)
            arguments.serviceOnly = true;
        else
            arguments.urls.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

int run(QGuiApplication &application, platform::ApplicationService &service, bool show)
{
    ScreenTypes types;
    platform::Platform platform = platform::createPlatform();
    AppIconLoader::setSource(platform.icons.get());
    QObject::connect(platform.appearance.get(), &platform::Appearance::iconThemeChanged, &application,
                     &AppIconLoader::invalidate);
    PreferenceStore preferences;
    AnalyticsManager analytics(preferences, {platform.deviceIdentity, {QUILLBAY_VERSION, {}}});
    analytics.initialize();
    NotificationCenter notifications;
    Theme theme(*platform.appearance, *platform.windowEffects);
    WorkspaceManager workspaces(preferences, notifications);
    QuillbayApp app(platform, service, preferences, workspaces, notifications);
    QObject::connect(&app.viewModel(), &QuillbayViewModel::eventHappened, &app,
                     [&analytics](const QString &name, const QVariantMap &properties) {
                         analytics.trackEvent(name, properties);
                     });
    QObject::connect(&app, &QuillbayApp::urlOpened, &app,
                     [&analytics](const QString &url) { analytics.handleURL(url); });
    AdminPrivileges admin(*platform.elevation);
    Uninstaller uninstaller({platform.residualRoots, std::move(platform.packages), platform.runToolElevated,
                             *platform.fileRemoval, *platform.trash, admin, *platform.fullDiskAccess,
                             ReceiptStore::defaultFolder()});
    Tools tools(preferences, workspaces, notifications, *platform.colorSampler, *platform.windowEffects);
    Screens screens(types, app.viewModel(), workspaces, notifications, uninstaller, tools);
    if (!screens.window())
        return 1;
    app.finishLaunching(*screens.window(), show, [&tools] { return tools.isRulerShowing(); });
    const int status = application.exec();
    AppIconLoader::shutDown();
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    platform::growMemoryInLargeSteps();
    const char *reason = nullptr;
    if (!platform::hasDisplay(&reason)) {
        std::fprintf(stderr, "quillbay: %s\n", reason);
        return unavailable;
    }
    const Arguments arguments = parse(argc, argv);
    const std::unique_ptr<platform::ApplicationService> service = platform::createApplicationService();
    switch (service->claim(arguments.urls)) {
    case platform::ApplicationService::Claim::Forwarded:
        return 0;
    case platform::ApplicationService::Claim::Refused:
        std::fprintf(stderr, "quillbay: the program already runs but does not answer\n");
        return 1;
    case platform::ApplicationService::Claim::Primary:
        break;
    }

    // A frame is drawn as soon as it is asked for instead of some milliseconds later.
    if (!qEnvironmentVariableIsSet("QT_QPA_UPDATE_IDLE_TIME"))
        qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QGuiApplication::setApplicationName(QStringLiteral("quillbay"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Quillbay"));
    QGuiApplication::setDesktopFileName(QLatin1String(platform::applicationId));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // Text as the desktop's font settings draw it; and one shader program for all of it, where the scene
    // graph's own way would need three before the first picture.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    const int status = run(application, *service, !arguments.serviceOnly);
    if (!Marlpost::isIdle())
        std::_Exit(status);
    return status;
}
