#include "platform/linux/desktop/X11WindowEffects.h"

#include "platform/linux/desktop/StartupSequence.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <xcb/xcb.h>

namespace quillbay::platform {

namespace {

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};

template <typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

// Source indication of _NET_ACTIVE_WINDOW: a pager, which acts for the user.
constexpr quint32 sourcePager = 2;

QNativeInterface::QX11Application *x11()
{
    return qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
}

int screenNumber()
{
    int wanted = 0;
    char *host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &wanted) == 0)
        wanted = 0;
    std::free(host);
    return wanted;
}

xcb_window_t rootWindow(xcb_connection_t *connection)
{
    int wanted = screenNumber();
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; wanted > 0 && screen.rem > 1; --wanted)
        xcb_screen_next(&screen);
    return screen.rem > 0 ? screen.data->root : static_cast<xcb_window_t>(XCB_NONE);
}

} // namespace

QList<quint32> blurRectangles(const QRegion &region, qreal devicePixelRatio)
{
    const auto device = [devicePixelRatio](int edge) {
        return static_cast<quint32>(qRound(std::max(0, edge) * devicePixelRatio));
    };
    QList<quint32> numbers;
    for (const QRect &rectangle : region) {
        const quint32 left = device(rectangle.x());
        const quint32 top = device(rectangle.y());
        const quint32 right = device(rectangle.x() + rectangle.width());
        const quint32 bottom = device(rectangle.y() + rectangle.height());
        if (right > left && bottom > top)
            numbers << left << top << right - left << bottom - top;
    }
    return numbers;
}

bool X11WindowEffects::isAvailable()
{
    const QNativeInterface::QX11Application *application = x11();
    return application && application->connection();
}

X11WindowEffects::X11WindowEffects()
    : m_connection(x11()->connection())
{
}

X11WindowEffects::Server &X11WindowEffects::server() const
{
    if (!m_server) {
        // The filter first: a change between the answer and the filter would be missed.
        qGuiApp->installNativeEventFilter(const_cast<X11WindowEffects *>(this));
        m_server = askServer();
    }
    return *m_server;
}

X11WindowEffects::Server X11WindowEffects::askServer() const
{
    static constexpr const char *names[AtomCount] = {"_KDE_NET_WM_BLUR_BEHIND_REGION", "_NET_ACTIVE_WINDOW",
                                                     "_NET_STARTUP_INFO_BEGIN", "_NET_STARTUP_INFO"};
    Server server;
    server.root = rootWindow(m_connection);
    std::array<xcb_intern_atom_cookie_t, AtomCount> cookies = {};
    for (std::size_t i = 0; i < cookies.size(); ++i)
        cookies[i] = xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(std::strlen(names[i])), names[i]);
    const auto listCookie = xcb_list_properties(m_connection, server.root);

    for (std::size_t i = 0; i < cookies.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookies[i], nullptr));
        server.atoms[i] = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    const Reply<xcb_list_properties_reply_t> list(
        xcb_list_properties_reply(m_connection, listCookie, nullptr));
    if (list && server.atoms[BlurRegion] != XCB_ATOM_NONE) {
        const xcb_atom_t *first = xcb_list_properties_atoms(list.get());
        const xcb_atom_t *last = first + xcb_list_properties_atoms_length(list.get());
        server.blurOffered = std::find(first, last, server.atoms[BlurRegion]) != last;
    }
    return server;
}

bool X11WindowEffects::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    constexpr uint8_t sentBySomeone = 0x80;
    if (!m_server || eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & ~sentBySomeone) != XCB_PROPERTY_NOTIFY)
        return false;
    const auto *change = static_cast<const xcb_property_notify_event_t *>(message);
    if (change->window == m_server->root && change->atom == m_server->atoms[BlurRegion])
        m_server->blurOffered = change->state == XCB_PROPERTY_NEW_VALUE;
    return false;
}

bool X11WindowEffects::canBlurBehind() const
{
    return server().blurOffered;
}

void X11WindowEffects::setBlurBehind(QWindow *window, const QRegion &region)
{
    const quint32 property = server().atoms[BlurRegion];
    if (!window || property == XCB_ATOM_NONE)
        return;
    const auto id = static_cast<xcb_window_t>(window->winId());
    const QList<quint32> numbers = blurRectangles(region, window->devicePixelRatio());
    // An empty list would mean the whole window.
    if (numbers.isEmpty())
        xcb_delete_property(m_connection, id, property);
    else
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, property, XCB_ATOM_CARDINAL, 32,
                            static_cast<uint32_t>(numbers.size()), numbers.constData());
    flush();
}

bool X11WindowEffects::canShowThrough() const
{
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screenNumber());
    const auto atomCookie =
        xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(m_connection, atomCookie, nullptr));
    if (!atom)
        return false;
    const auto ownerCookie = xcb_get_selection_owner(m_connection, atom->atom);
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(m_connection, ownerCookie, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

void X11WindowEffects::bringToFront(QWindow *window, const QString &activationToken)
{
    if (!window)
        return;
    showInFront(*window);

    const auto id = static_cast<xcb_window_t>(window->winId());
    const std::optional<quint32> time = startupTime(activationToken);
    activate(id, time.value_or(XCB_CURRENT_TIME));
    if (time)
        endStartupSequence(id, activationToken);
    flush();
}

void X11WindowEffects::activate(quint32 window, quint32 time) const
{
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = server().atoms[ActiveWindow];
    event.data.data32[0] = sourcePager;
    event.data.data32[1] = time;
    xcb_send_event(m_connection, 0, server().root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
}

void X11WindowEffects::endStartupSequence(quint32 window, const QString &startupId) const
{
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = server().atoms[StartupBegin];
    for (const QByteArray &piece : clientMessagePieces(startupFinishedText(startupId))) {
        std::copy(piece.begin(), piece.end(), std::begin(event.data.data8));
        xcb_send_event(m_connection, 0, server().root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&event));
        event.type = server().atoms[StartupGoesOn];
    }
}

void X11WindowEffects::flush() const
{
    if (xcb_flush(m_connection) <= 0)
        qWarning("The connection to the X server is broken");
}

} // namespace quillbay::platform
