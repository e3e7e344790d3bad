#pragma once

#include "platform/ColorSampler.h"

#include <QDBusConnection>

#include <memory>

namespace quillbay::platform {

/// The ways of the running session, in this order: the desktop portal over `sessionBus`, the picker of KWin
/// where that is the desktop, an own one where the program is an X client. Asks nobody; needs the application
/// object.
std::unique_ptr<ColorSampler> chooseColorSampler(const QDBusConnection &sessionBus);

} // namespace quillbay::platform
