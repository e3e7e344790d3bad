#include "platform/linux/desktop/LinuxWindowEffects.h"

#include "platform/linux/desktop/WaylandWindowEffects.h"
#include "platform/linux/desktop/X11WindowEffects.h"
#include "platform/none/NoDesktop.h"

namespace quillbay::platform {

std::unique_ptr<WindowEffects> chooseWindowEffects()
{
    if (X11WindowEffects::isAvailable())
        return std::make_unique<X11WindowEffects>();
    if (WaylandWindowEffects::isAvailable())
        return std::make_unique<WaylandWindowEffects>();
    return std::make_unique<NoWindowEffects>();
}

} // namespace quillbay::platform
