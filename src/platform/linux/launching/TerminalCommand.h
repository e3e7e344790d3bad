#pragma once

#include "platform/linux/launching/ChildEnvironment.h"

#include <QStringList>

namespace quillbay::platform {

/// The command that runs `arguments` in the user's terminal; empty if no terminal is installed.
///
/// Looked for in this order on the `PATH` of `environment`: `xdg-terminal-exec`, which knows the user's
/// choice; `x-terminal-emulator`, the administrator's; the program that `TERMINAL` names; the common ones.
/// The arguments are passed as they are, each terminal told in its own way where they begin.
QStringList terminalCommand(const QStringList &arguments, const Environment &environment);

} // namespace quillbay::platform
