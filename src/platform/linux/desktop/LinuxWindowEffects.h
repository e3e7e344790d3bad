#pragma once

#include "platform/WindowEffects.h"

#include <memory>

namespace quillbay::platform {

/// The effects of the window system that the running application object uses: X11, Wayland, or none of both.
std::unique_ptr<WindowEffects> chooseWindowEffects();

} // namespace quillbay::platform
