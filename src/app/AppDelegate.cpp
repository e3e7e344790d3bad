#include "app/AppDelegate.h"

#include "app/MainWindow.h"
#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "platform/ApplicationService.h"

#include <QCoreApplication>

namespace quillbay {

namespace {

QString launchedBeforeKey()
{
    return QStringLiteral("QuillbayHasLaunchedBefore");
}

} // namespace

AppDelegate::AppDelegate(const Surroundings &surroundings, QObject *parent)
    : QObject(parent)
    , m_around(surroundings)
    , m_windowDelegate(surroundings.mainWindow)
    , m_hotkeyManager(surroundings.hotkey, surroundings.mainWindow, surroundings.notifications)
{
    const platform::ApplicationService *service = &m_around.service;
    connect(service, &platform::ApplicationService::activated, this,
            &AppDelegate::applicationShouldHandleReopen);
    connect(service, &platform::ApplicationService::opened, this, [this](const QStringList &urls) {
        for (const QString &url : urls)
            Q_EMIT urlOpened(url);
    });
    connect(service, &platform::ApplicationService::actionRequested, this, &AppDelegate::performAction);
}

void AppDelegate::applicationDidFinishLaunching(bool show)
{
    const bool launchedBefore = m_around.preferences.boolean(launchedBeforeKey()).value_or(false);
    m_around.mainWindow.setUp(launchedBefore);
    if (!launchedBefore)
        m_around.preferences.setBoolean(launchedBeforeKey(), true);
    if (show)
        m_around.mainWindow.bringForward({});
    m_around.service.start();
    m_hotkeyManager.registerHotkey();
}

void AppDelegate::applicationShouldHandleReopen(const QString &activationToken)
{
    m_around.mainWindow.bringForward(activationToken);
    if (m_around.isRulerShowing && m_around.isRulerShowing())
        Q_EMIT m_around.notifications.quillbayAppReopened();
}

void AppDelegate::performAction(const QString &action, const QVariantList &parameters)
{
    if (action == QLatin1String("quit"))
        QCoreApplication::exit(); // quit() would ask the window, which only hides
    else if (action == QLatin1String("save-picture"))
        m_around.mainWindow.savePicture(parameters.value(0).toString());
}

} // namespace quillbay
