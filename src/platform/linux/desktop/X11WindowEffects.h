#pragma once

#include "platform/WindowEffects.h"

#include <QAbstractNativeEventFilter>
#include <QList>

#include <array>
#include <optional>

struct xcb_connection_t;

namespace quillbay::platform {

/// The rectangles of `region` in device pixels as `_KDE_NET_WM_BLUR_BEHIND_REGION` lists them: x, y, width
/// and height of each. Edges are rounded, so that neighbours stay neighbours; what lies left of or above the
/// window is cut off.
QList<quint32> blurRectangles(const QRegion &region, qreal devicePixelRatio);

/// Windows under an X server, over the connection that Qt has.
///
/// The first use of blur or activation waits for one answer of the server, which names the atoms and tells
/// whether the compositor offers blur; after that nothing waits, and the compositor's coming and going is
/// followed by events.
class X11WindowEffects final : public WindowEffects, private QAbstractNativeEventFilter
{
public:
    /// Whether the application's windows are on X11. Needs the application object.
    static bool isAvailable();

    /// Only where available.
    X11WindowEffects();

    /// Whether the compositor announces `_KDE_NET_WM_BLUR_BEHIND_REGION` by a property of that name on the
    /// root.
    bool canBlurBehind() const override;
    void setBlurBehind(QWindow *window, const QRegion &region) override;
    bool canPlaceWindows() const override { return true; }
    /// Whether a compositor runs, which owns a selection then. Waits for the server to tell.
    bool canShowThrough() const override;
    /// Asks the window manager as a pager would, on behalf of the user: a window that only asks for itself is
    /// refused by focus-stealing prevention when a global key summons it. A token that is a startup id gives
    /// the time of the user's action, and its start-up sequence ends here.
    void bringToFront(QWindow *window, const QString &activationToken) override;

private:
    enum Atom { BlurRegion, ActiveWindow, StartupBegin, StartupGoesOn, AtomCount };

    /// What the server told at the first use.
    struct Server
    {
        quint32 root = 0;
        std::array<quint32, AtomCount> atoms = {}; ///< 0 where the server gave none.
        bool blurOffered = false;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    Server &server() const;
    Server askServer() const;
    void activate(quint32 window, quint32 time) const;
    void endStartupSequence(quint32 window, const QString &startupId) const;
    void flush() const;

    xcb_connection_t *m_connection;
    mutable std::optional<Server> m_server;
};

} // namespace quillbay::platform
