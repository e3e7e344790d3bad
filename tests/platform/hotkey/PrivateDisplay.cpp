#include "platform/hotkey/PrivateDisplay.h"

#include <QTest>

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
    const QStringList arguments{QStringLiteral("-displayfd"), QStringLiteral("1"),
                                QStringLiteral("-screen"),    QStringLiteral("0"),
                                QStringLiteral("640x480x24"), QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"),        QStringLiteral("-noreset")};
    m_server = std::make_unique<TestProgram>(QStringLiteral("Xvfb"), arguments,
                                             QProcessEnvironment::systemEnvironment());
    if (!m_server->waitFor(QString()))
        qFatal("Xvfb does not start");
    m_name = ':' + m_server->lines().constFirst().toLatin1();
    m_connection = xcb_connect(m_name.constData(), nullptr);
    if (xcb_connection_has_error(m_connection))
        qFatal("no connection to Xvfb");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_windowManager = std::make_unique<TestProgram>(QStringLiteral("openbox"), QStringList(), environment());
    if (!waitForWindowManager())
        qFatal("openbox does not start");
}

PrivateDisplay::~PrivateDisplay()
{
    xcb_disconnect(m_connection);
}

QProcessEnvironment PrivateDisplay::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_name));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    // The window manager ends without its theme.
    environment.insert(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share"));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/dev/null"));
    return environment;
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

/// Whether a window of the test's own gets managed. One that comes while the manager starts may be overlooked
/// by it for good, hence more than one attempt.
bool PrivateDisplay::waitForWindowManager() const
{
    const char name[] = "WM_STATE";
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> state(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, sizeof name - 1, name), nullptr));
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto isManaged = [&] {
        const std::unique_ptr<xcb_get_property_reply_t, Freed> property(xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, 0, window, state->atom, state->atom, 0, 1),
            nullptr));
        return property && xcb_get_property_value_length(property.get()) > 0;
    };
    bool hasManager = false;
    for (int attempt = 0; state && !hasManager && attempt < 20; ++attempt) {
        xcb_unmap_window(m_connection, window);
        xcb_map_window(m_connection, window);
        xcb_flush(m_connection);
        hasManager = QTest::qWaitFor(isManaged, 1000);
    }
    xcb_destroy_window(m_connection, window);
    xcb_flush(m_connection);
    return hasManager;
}

} // namespace quillbay::testing
