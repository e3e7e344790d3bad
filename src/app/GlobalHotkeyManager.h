#pragma once

#include <QKeyCombination>
#include <QObject>

namespace quillbay {

class MainWindow;
class NotificationCenter;

namespace platform {
class GlobalHotkey;
}

/// The key that brings the program to the front from anywhere: Control+Alt+N. It does not toggle: with the
/// window in front it only announces itself again.
///
/// Thread: main thread. Failure leaves the program fully usable without the key; the printed line is its only
/// trace.
class GlobalHotkeyManager : public QObject
{
    Q_OBJECT

public:
    static constexpr QKeyCombination key{Qt::ControlModifier | Qt::AltModifier, Qt::Key_N};

    /// All must outlive this object.
    GlobalHotkeyManager(platform::GlobalHotkey &hotkey, MainWindow &mainWindow,
                        NotificationCenter &notifications, QObject *parent = nullptr);

    /// Asks for the key, once. It stays until the process ends.
    void registerHotkey();

private:
    platform::GlobalHotkey &m_hotkey;
    MainWindow &m_mainWindow;
    NotificationCenter &m_notifications;
};

} // namespace quillbay
