#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

namespace quillbay {

/// Where the window stood when the program was last used.
struct WindowPlacement
{
    QSize size;                     ///< Device-independent pixels.
    std::optional<QPoint> position; ///< Top left; absent where programs cannot place their windows.
    bool maximized = false;
    std::optional<int> sidebarWidth = {}; ///< Device-independent pixels; absent where nobody has chosen one.

    friend bool operator==(const WindowPlacement &, const WindowPlacement &) = default;
};

/// The smallest size the window takes.
inline constexpr QSize smallestWindow(900, 600);

/// The first launch: three quarters of the screen each way, centred on it. Without any screen, a screen of
/// 1440 by 900 at the origin is assumed.
WindowPlacement firstPlacement(const QRect &screen);

/// A later launch: a stored placement with each edge raised to the smallest window's. The position is kept as
/// long as the top of the window can be reached on one of `screens`; otherwise it is dropped and the desktop
/// places the window.
WindowPlacement restoredPlacement(WindowPlacement stored, const QList<QRect> &screens);

/// One JSON object: "width", "height", "maximized" and, where known, "x" and "y", and "sidebar".
QByteArray encodePlacement(const WindowPlacement &placement);
/// Nothing where the text is not such an object or a number is absurd.
std::optional<WindowPlacement> decodePlacement(const QByteArray &json);

/// Reads `window.json` of the state folder; nothing where it is missing or broken.
std::optional<WindowPlacement> loadPlacement();
/// Replaces that file in one step, making the folder. False when it could not. May block on the disk: not for
/// the main thread.
bool savePlacement(const WindowPlacement &placement);

} // namespace quillbay
