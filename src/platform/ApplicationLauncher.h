#pragma once

#include <QString>

#include <functional>

class QWindow;

namespace quillbay::platform {

enum class LaunchOutcome {
    Started,   ///< The program runs, or its D-Bus service took the activation.
    NotFound,  ///< The application or its program is gone.
    Malformed, ///< The application is there, but its command line cannot be run.
    Failed     ///< The system refused; the reason tells more.
};

struct LaunchResult
{
    LaunchOutcome outcome = LaunchOutcome::Failed;
    QString reason; ///< For the log; empty when started.
};

struct LaunchRequest
{
    QString path;              ///< As `InstalledApplication::path`.
    QWindow *window = nullptr; ///< The window the user clicked in: gives the activation token. May be null.
    quint32 timestamp = 0;     ///< X11 time of the click in milliseconds; 0 when unknown.
};

/// Starts applications. A started program belongs to itself: own session, own scope where the service manager
/// offers one, none of this program's descriptors and private environment; it lives on when this program
/// ends.
///
/// Thread: main thread. Nothing in here waits: files are read on a worker, D-Bus is asynchronous.
class ApplicationLauncher
{
public:
    virtual ~ApplicationLauncher() = default;

    /// Launches, and calls `done` on the main thread exactly once, later than this call returns. `done` may
    /// be empty.
    virtual void launch(const LaunchRequest &request, std::function<void(const LaunchResult &)> done) = 0;
};

} // namespace quillbay::platform
