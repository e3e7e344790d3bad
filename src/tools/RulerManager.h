#pragma once

#include "foundation/ObservableObject.h"

#include <memory>

namespace quillbay {

class RulerWindow;
class WorkspaceStorage;

namespace platform {
class WindowEffects;
} // namespace platform

/// The ruler on the screen, and the list of sizes that were measured with it: each opening, each end of a
/// resize, newest first, a repeated one moved to the front, at most 10 in a workspace.
///
/// Under Wayland a program neither places its windows nor keeps them above others; the ruler is then a window
/// like any other, and a line on the standard output says so.
///
/// Thread: main thread.
class RulerManager : public ObservableObject
{
    Q_OBJECT
    Q_PROPERTY(bool isRulerShowing READ isRulerShowing NOTIFY isRulerShowingChanged)

public:
    /// Both references must outlive this object.
    RulerManager(WorkspaceStorage &storage, const platform::WindowEffects &effects,
                 QObject *parent = nullptr);
    ~RulerManager() override;

    bool isRulerShowing() const { return m_window != nullptr; }

    /// In the middle of the screen that is worked on. Nothing where it is open.
    Q_INVOKABLE void showRuler();
    Q_INVOKABLE void closeRuler();
    /// Keeps the top left corner. Nothing where it is closed. Device-independent pixels.
    Q_INVOKABLE void resizeRuler(qreal width, qreal height);
    /// Copies a listed measurement and gives the ruler that size, where it is open and the text is one.
    Q_INVOKABLE void restore(const QString &measurement);
    Q_INVOKABLE void clearMeasurements();

    /// Null while it is closed.
    RulerWindow *window() const { return m_window.get(); }

Q_SIGNALS:
    void isRulerShowingChanged();

private:
    struct DeletedLater
    {
        void operator()(RulerWindow *window) const;
    };

    void addMeasurement(int width, int height);
    void windowDidEndLiveResize();

    WorkspaceStorage &m_storage;
    const platform::WindowEffects &m_effects;
    std::unique_ptr<RulerWindow, DeletedLater> m_window;
};

} // namespace quillbay
