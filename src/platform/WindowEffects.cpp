#include "platform/WindowEffects.h"

#include <QWindow>

namespace quillbay::platform {

void WindowEffects::showInFront(QWindow &window)
{
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.setVisible(true); // show() would make a maximised window a normal one
    window.raise();
    window.requestActivate();
}

} // namespace quillbay::platform
