#pragma once

#include "platform/ApplicationLauncher.h"
#include "platform/ApplicationSource.h"
#include "platform/linux/launching/ActivationTokens.h"
#include "platform/linux/launching/ChildEnvironment.h"
#include "platform/linux/launching/DetachedProcess.h"

#include <variant>

namespace quillbay::platform {

/// Decides what process an application's details come to: the program of a bundle or image, or the command
/// line of a desktop entry, in the user's terminal if it asks for one. Gives the reason if there is nothing
/// to run.
///
/// `environment` is what the program gets apart from what describes its own start: the token, the entry it
/// was started from (`GIO_LAUNCHED_DESKTOP_FILE` and its process id), the working directory. The working
/// directory is that of the entry or the user's home, or the root folder where the home is missing.
///
/// Looks for the program on disk: belongs on a worker.
std::variant<DetachedProcess, LaunchResult> planLaunch(const QString &path, const ApplicationDetails &details,
                                                       const ActivationToken &token,
                                                       const Environment &environment);

/// What an attempt at such a process means to the caller of the launcher.
LaunchResult resultOfStart(const DetachedProcess &process, const DetachedStart &start);

} // namespace quillbay::platform
