#pragma once

#include <QString>

#include <functional>

class QWindow;

namespace quillbay::platform {

/// What lets the first window of a launched program come forward with the keyboard. Empty members: nothing is
/// handed on.
struct ActivationToken
{
    QString startupId;       ///< `DESKTOP_STARTUP_ID`
    QString activationToken; ///< `XDG_ACTIVATION_TOKEN`
};

struct ActivationTokenRequest
{
    QWindow *window = nullptr;  ///< The window the user clicked in; may be null.
    quint32 timestamp = 0;      ///< X11 time of the click in milliseconds; 0 when unknown.
    QString identifier;         ///< Desktop file id of what is launched.
    bool startupNotify = false; ///< The program promises to complete a startup notification.
};

/// A window system's way of handing the user's attention to another program. Each way is an object that says
/// whether it applies to the running session.
///
/// Thread: main thread.
class ActivationTokens
{
public:
    using Answer = std::function<void(const ActivationToken &)>;

    virtual ~ActivationTokens() = default;

    virtual bool isAvailable() const = 0;

    /// Calls `answer` exactly once, at once or from the event loop, within a quarter of a second; with an
    /// empty token if there is none to be had. Requests that are open when the object goes are answered then.
    virtual void request(const ActivationTokenRequest &request, Answer answer) = 0;
};

} // namespace quillbay::platform
