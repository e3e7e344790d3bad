#pragma once

#include <QQuickView>

namespace quillbay {

/// The overlay: a translucent window without a frame that stays above others where the desktop lets it.
///
/// The desktop resizes it, from the edges that its content offers or in any way of the desktop's own, and
/// holds pointer and keyboard meanwhile; no window system tells a window that this has ended. But the first
/// that a window hears of pointer or keyboard after its size has changed comes after the end: both X11 and
/// Wayland let the pointer enter anew. That is what counts as the end of a live resize. A size that the
/// program asked for by `setSize` begins none.
///
/// Thread: main thread.
class RulerWindow : public QQuickView
{
    Q_OBJECT

public:
    /// With an engine of its own: it may outlive that of the main window.
    explicit RulerWindow(const QUrl &content);

    /// Keeps the top left corner.
    void setSize(QSize size);

    /// Where nothing shows through: the window is as if it had a hole where its content draws only lines, and
    /// consists of its edges and of what the content tells by its properties `solidArea` and `solidRadius`.
    void setOpaque();

Q_SIGNALS:
    void liveResizeEnded();

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void cutOut();

    bool m_isOpaque = false;
    QSize m_asked; ///< What the program asked for last.
    bool m_isLiveResize = false;
};

} // namespace quillbay
