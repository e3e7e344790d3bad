#pragma once

#include <QDBusConnection>

namespace quillbay::platform {

/// The connection to the user's session bus; one that is not connected where the session has none.
///
/// Asks for a bus only where the environment names one or the runtime folder holds its socket: the library's
/// last resort is to start a bus of its own through the X display, which waits for a process and finds nobody
/// there. Needs no application object. Thread: any.
QDBusConnection sessionBus();

} // namespace quillbay::platform
