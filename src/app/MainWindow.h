#pragma once

#include "app/WindowPlacement.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <functional>

class QQuickWindow;

namespace quillbay {

namespace platform {
class WindowEffects;
}

/// The one window: its place, and coming and going. The window itself is the root of the screens; this only
/// steers it.
///
/// Thread: main thread.
class MainWindow : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object. `window` is not shown yet.
    MainWindow(QQuickWindow &window, platform::WindowEffects &effects, QObject *parent = nullptr);
    /// Waits for the last placement to be on disk.
    ~MainWindow() override;

    QQuickWindow &window() const { return m_window; }

    /// Gives the window its size and place: the stored ones, or three quarters of the screen on the first
    /// launch ever.
    void setUp(bool launchedBefore);

    /// Shows the window if need be, restores it from being minimised, puts it in front and gives it the
    /// keyboard.
    void bringForward(const QString &activationToken);

    /// What the close button does: the window goes, the program and all state stay.
    void hide();

    /// Calls back on the main thread once the frame that holds everything known now is on the screen.
    void whenPainted(std::function<void()> done);

    /// Writes a picture of the window to `path`, which must be absolute and end in ".png"; the outcome is
    /// printed.
    void savePicture(const QString &path);

Q_SIGNALS:
    /// The window has the keyboard.
    void becameKey();

private Q_SLOTS:
    void rememberPlacement();

private:
    void storePlacement();
    WindowPlacement currentPlacement() const;

    QQuickWindow &m_window;
    platform::WindowEffects &m_effects;
    WindowPlacement m_placement;
    QTimer m_storeTimer;
    QThreadPool m_writer;
    bool m_unsaved = false;
};

} // namespace quillbay
