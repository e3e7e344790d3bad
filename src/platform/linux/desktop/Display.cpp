#include "platform/Platform.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace quillbay::platform {

namespace {

/// Whether a Wayland compositor listens where the environment says.
bool waylandAnswers()
{
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET"))
        return true;
    QByteArray path = qgetenv("WAYLAND_DISPLAY");
    if (path.isEmpty())
        return false;
    if (!path.startsWith('/'))
        path = qgetenv("XDG_RUNTIME_DIR") + '/' + path;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return false;
    const bool answers =
        ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    ::close(socket);
    return answers;
}

bool x11Answers()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

} // namespace

bool hasDisplay(const char **reason)
{
    const QList<QByteArray> wanted = qgetenv("QT_QPA_PLATFORM").toLower().split(';');
    const bool chosen = !wanted.constFirst().isEmpty();
    const auto isWindowSystem = [](const QByteArray &name) {
        return name.startsWith("xcb") || name.startsWith("wayland");
    };
    // Other platforms of Qt (offscreen, vnc, eglfs) need no server; whoever names one means it.
    if (chosen && !std::all_of(wanted.begin(), wanted.end(), isWindowSystem))
        return true;
    const auto mayUse = [&wanted, chosen](const char *name) {
        return !chosen || std::any_of(wanted.begin(), wanted.end(), [name](const QByteArray &platform) {
            return platform.startsWith(name);
        });
    };
    if ((mayUse("wayland") && waylandAnswers()) || (mayUse("xcb") && x11Answers()))
        return true;
    const bool named =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (reason)
        *reason = named ? "Quillbay cannot open the display that DISPLAY or WAYLAND_DISPLAY names."
                        : "Quillbay needs a graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set.";
    return false;
}

} // namespace quillbay::platform
