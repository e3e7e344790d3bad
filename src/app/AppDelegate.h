#pragma once

#include "app/GlobalHotkeyManager.h"
#include "app/WindowDelegate.h"

#include <QObject>

#include <functional>

namespace quillbay {

class MainWindow;
class NotificationCenter;
class PreferenceStore;

namespace platform {
class ApplicationService;
class GlobalHotkey;
} // namespace platform

/// What happens when the program has started, is opened again, and is asked to quit.
/// Thread: main thread.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    /// What the delegate speaks to; all must outlive it.
    struct Surroundings
    {
        MainWindow &mainWindow;
        PreferenceStore &preferences;
        NotificationCenter &notifications;
        platform::ApplicationService &service;
        platform::GlobalHotkey &hotkey;
        /// Whether the screen ruler is showing; without it none ever is.
        std::function<bool()> isRulerShowing = {};
    };

    explicit AppDelegate(const Surroundings &surroundings, QObject *parent = nullptr);

    /// Sets the window up and asks for the hotkey. `show` is false when the desktop started the program only
    /// to serve: then the window waits for the first activation.
    void applicationDidFinishLaunching(bool show);

    /// The program was started again or its icon clicked: the window comes back with all its state,
    /// and with the measure popover where the ruler is showing.
    void applicationShouldHandleReopen(const QString &activationToken);

Q_SIGNALS:
    /// A URL was opened into the program.
    void urlOpened(const QString &url);

private:
    void performAction(const QString &action, const QVariantList &parameters);

    Surroundings m_around;
    WindowDelegate m_windowDelegate;
    GlobalHotkeyManager m_hotkeyManager;
};

} // namespace quillbay
