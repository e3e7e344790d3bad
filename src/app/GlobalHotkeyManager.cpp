#include "app/GlobalHotkeyManager.h"

#include "app/MainWindow.h"
#include "foundation/Console.h"
#include "foundation/NotificationCenter.h"
#include "platform/GlobalHotkey.h"

namespace quillbay {

GlobalHotkeyManager::GlobalHotkeyManager(platform::GlobalHotkey &hotkey, MainWindow &mainWindow,
                                         NotificationCenter &notifications, QObject *parent)
    : QObject(parent)
    , m_hotkey(hotkey)
    , m_mainWindow(mainWindow)
    , m_notifications(notifications)
{
    connect(
        &m_hotkey, &platform::GlobalHotkey::registered, this, [](const QString &way, const QString &trigger) {
            printLine(QStringLiteral("🚀 Successfully registered global hotkey %1 (%2)").arg(trigger, way));
        });
    connect(&m_hotkey, &platform::GlobalHotkey::failed, this, [](const QString &reason) {
        printLine(QStringLiteral("⚠️ Failed to register global hotkey: %1").arg(reason));
    });
    connect(
        &m_hotkey, &platform::GlobalHotkey::activated, this,
        [this](const QString &token) {
            m_mainWindow.bringForward(token);
            Q_EMIT m_notifications.quillbayHotkeyTriggered();
        },
        Qt::QueuedConnection);
    // Only now may the keys that were typed meanwhile flow: they go to whoever has the keyboard.
    connect(&m_mainWindow, &MainWindow::becameKey, &m_hotkey, &platform::GlobalHotkey::keyboardTaken);
}

void GlobalHotkeyManager::registerHotkey()
{
    m_hotkey.registerKey(key);
}

} // namespace quillbay
