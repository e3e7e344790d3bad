#include "platform/hotkey/PrivateDisplay.h"

#include <cstdlib>
#include <memory>

namespace quillbay::testing {

namespace {

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};

} // namespace

PrivateDisplay::PrivateDisplay()
{
    m_connection = xcb_connect(m_server.display().constData(), nullptr);
    if (xcb_connection_has_error(m_connection))
        qFatal("no connection to Xvfb");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_server.startWindowManager();
}

PrivateDisplay::~PrivateDisplay()
{
    xcb_disconnect(m_connection);
}

void PrivateDisplay::run(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s failed", qPrintable(program));
}

void PrivateDisplay::xdotool(const QString &commands) const
{
    run(QStringLiteral("xdotool"), commands.split(QLatin1Char(' ')));
}

bool PrivateDisplay::grab(xcb_keycode_t key, std::uint16_t modifiers) const
{
    const auto cookie = xcb_grab_key_checked(m_connection, 0, m_root, modifiers, key, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC);
    const std::unique_ptr<xcb_generic_error_t, Freed> error(xcb_request_check(m_connection, cookie));
    return !error;
}

void PrivateDisplay::ungrab(xcb_keycode_t key, std::uint16_t modifiers) const
{
    const auto cookie = xcb_ungrab_key_checked(m_connection, key, m_root, modifiers);
    const std::unique_ptr<xcb_generic_error_t, Freed> error(xcb_request_check(m_connection, cookie));
    if (error)
        qFatal("cannot give up a grab");
}

bool PrivateDisplay::isFree(xcb_keycode_t key, std::uint16_t modifiers) const
{
    if (!grab(key, modifiers))
        return false;
    ungrab(key, modifiers);
    return true;
}

} // namespace quillbay::testing
