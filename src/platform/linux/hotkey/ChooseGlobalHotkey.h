#pragma once

#include <QDBusConnection>

#include <memory>

namespace quillbay::platform {

class GlobalHotkey;

/// The way of having a global key in the running session: the X server's grab where the program is an X
/// client, the desktop portal over `sessionBus` where it is a Wayland client, else one that only fails. Asks
/// nobody; needs the application object.
std::unique_ptr<GlobalHotkey> chooseGlobalHotkey(const QDBusConnection &sessionBus);

} // namespace quillbay::platform
