#include "platform/linux/hotkey/X11GlobalHotkey.h"

#include "platform/linux/hotkey/X11Keymap.h"

#include <QGuiApplication>
#include <QKeySequence>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillbay::platform {

namespace {

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, Freed>;

// Of the keyboard extension's one event number, by their second byte.
constexpr std::uint8_t xkbNewKeyboardNotify = 0;
constexpr std::uint8_t xkbMapNotify = 1;

xcb_connection_t *applicationConnection()
{
    const auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

struct Mappings
{
    X11KeyboardMapping keyboard;
    X11ModifierMapping modifiers;
};

Mappings fetchMappings(xcb_connection_t *connection)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const auto keyCount = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto keyboardCookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, keyCount);
    const auto modifierCookie = xcb_get_modifier_mapping(connection);
    const Reply<xcb_get_keyboard_mapping_reply_t> keyboard(
        xcb_get_keyboard_mapping_reply(connection, keyboardCookie, nullptr));
    const Reply<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
    Mappings mappings;
    mappings.keyboard.firstKeycode = setup->min_keycode;
    if (keyboard) {
        const xcb_keysym_t *keysyms = xcb_get_keyboard_mapping_keysyms(keyboard.get());
        mappings.keyboard.keysymsPerKeycode = keyboard->keysyms_per_keycode;
        mappings.keyboard.keysyms.assign(keysyms,
                                         keysyms + xcb_get_keyboard_mapping_keysyms_length(keyboard.get()));
    }
    if (modifiers) {
        const xcb_keycode_t *keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
        mappings.modifiers.keycodesPerModifier = modifiers->keycodes_per_modifier;
        mappings.modifiers.keycodes.assign(
            keycodes, keycodes + xcb_get_modifier_mapping_keycodes_length(modifiers.get()));
    }
    return mappings;
}

std::uint8_t xkbEventNumber(xcb_connection_t *connection)
{
    const char name[] = "XKEYBOARD";
    const Reply<xcb_query_extension_reply_t> extension(xcb_query_extension_reply(
        connection, xcb_query_extension(connection, std::uint16_t(std::strlen(name)), name), nullptr));
    return extension && extension->present ? extension->first_event : 0;
}

} // namespace

X11GlobalHotkey::X11GlobalHotkey(std::chrono::milliseconds holdLimit, QObject *parent)
    : GlobalHotkey(parent)
{
    m_holdGuard.setSingleShot(true);
    m_holdGuard.setTimerType(Qt::PreciseTimer);
    m_holdGuard.setInterval(holdLimit);
    connect(&m_holdGuard, &QTimer::timeout, this, &X11GlobalHotkey::letKeysGo);
}

X11GlobalHotkey::~X11GlobalHotkey()
{
    if (!m_connection || applicationConnection() != m_connection)
        return;
    qGuiApp->removeNativeEventFilter(this);
    if (m_holdGuard.isActive())
        letKeysGo();
    releaseGrabs();
}

bool X11GlobalHotkey::isAvailable() const
{
    return applicationConnection() != nullptr;
}

void X11GlobalHotkey::registerKey(QKeyCombination key)
{
    m_key = key;
    QMetaObject::invokeMethod(this, &X11GlobalHotkey::start, Qt::QueuedConnection);
}

void X11GlobalHotkey::start()
{
    m_isRegrabDue = false;
    const bool isFirst = !m_connection;
    if (isFirst) {
        m_connection = applicationConnection();
        if (!m_connection) {
            Q_EMIT failed(QStringLiteral("not connected to an X server"));
            return;
        }
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        m_xkbEvent = xkbEventNumber(m_connection);
        qGuiApp->installNativeEventFilter(this);
    }

    const bool wasLive = !m_grabs.empty();
    const QString name = QKeySequence(m_key).toString(QKeySequence::NativeText);
    const Mappings mappings = fetchMappings(m_connection);
    const std::uint16_t modifiers = x11Modifiers(m_key.keyboardModifiers());
    const std::uint16_t numLock = x11NumLockMask(mappings.keyboard, mappings.modifiers);
    std::vector<Grab> grabs;
    for (const xcb_keycode_t keycode : x11Keycodes(mappings.keyboard, x11Keysym(m_key.key()))) {
        for (const int locks : {0, int(XCB_MOD_MASK_LOCK), int(numLock), numLock | XCB_MOD_MASK_LOCK}) {
            const Grab grab{keycode, std::uint16_t(modifiers | locks)};
            if (std::find(grabs.begin(), grabs.end(), grab) == grabs.end())
                grabs.push_back(grab);
        }
    }
    if (wasLive && grabs == m_grabs)
        return;
    releaseGrabs();
    const bool isLive = grabAll(grabs);
    if (isLive && !wasLive)
        Q_EMIT registered(QStringLiteral("X11 grab"), name);
    if (!isLive && (isFirst || wasLive))
        Q_EMIT failed((grabs.empty() ? QStringLiteral("the keyboard has no key for ")
                                     : QStringLiteral("another program holds ")) +
                      name);
}

bool X11GlobalHotkey::grabAll(const std::vector<Grab> &grabs)
{
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(grabs.size());
    for (const Grab &grab : grabs) {
        // Owner events: while the key is still down, further keys reach a window of this program as usual.
        cookies.push_back(xcb_grab_key_checked(m_connection, 1, m_root, grab.modifiers, grab.keycode,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC));
    }
    m_grabs = grabs;
    bool isGranted = !grabs.empty();
    for (const xcb_void_cookie_t cookie : cookies) {
        const Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        releaseGrabs();
    return isGranted;
}

void X11GlobalHotkey::releaseGrabs()
{
    for (const Grab &grab : m_grabs)
        xcb_ungrab_key(m_connection, grab.keycode, m_root, grab.modifiers);
    m_grabs.clear();
    xcb_flush(m_connection);
}

bool X11GlobalHotkey::nativeEventFilter(const QByteArray &type, void *message, qintptr *)
{
    if (type != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (const std::uint8_t number = event->response_type & 0x7f) {
    case XCB_KEY_PRESS:
        return pressed(*reinterpret_cast<const xcb_key_press_event_t *>(event));
    case XCB_KEY_RELEASE:
        return released(*reinterpret_cast<const xcb_key_release_event_t *>(event));
    case XCB_FOCUS_IN:
        focusedIn(*reinterpret_cast<const xcb_focus_in_event_t *>(event));
        return false;
    case XCB_MAPPING_NOTIFY:
        mappingChanged();
        return false;
    default:
        // Clients that use the keyboard extension get its event in place of the core one.
        if (m_xkbEvent != 0 && number == m_xkbEvent &&
            (event->pad0 == xkbNewKeyboardNotify || event->pad0 == xkbMapNotify))
            mappingChanged();
        return false;
    }
}

bool X11GlobalHotkey::pressed(const xcb_key_press_event_t &press)
{
    const bool isOnRoot = press.event == m_root;
    const bool isRepeat = takeAsRepeat(press);
    if (isRepeat) {
        if (isOnRoot)
            letKeysGo();
        return true;
    }
    const Grab grab{press.detail, std::uint16_t(press.state & 0xff)};
    const bool isHotkey = isOnRoot && std::find(m_grabs.begin(), m_grabs.end(), grab) != m_grabs.end();
    if (!isHotkey) {
        // A press that was on its way while the grab was given up has stopped the keyboard all the same.
        if (isOnRoot)
            xcb_allow_events(m_connection, XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
        return false;
    }
    m_last = {.keycode = press.detail, .isDown = true};
    m_holdGuard.start();
    announce(hasFocus());
    // Left to Qt, which notes the time of the press: without it window managers refuse to bring a window
    // forward.
    return false;
}

void X11GlobalHotkey::announce(bool hadFocus)
{
    const auto announcement = [this, hadFocus] {
        Q_EMIT activated({});
        // No focus change will follow. Queued, after whatever the press has set off.
        if (hadFocus)
            QMetaObject::invokeMethod(this, &X11GlobalHotkey::keyboardTaken, Qt::QueuedConnection);
    };
    QMetaObject::invokeMethod(this, announcement, Qt::QueuedConnection);
}

/// A key that repeats is, as the connection is set up, not released in between, or released and pressed again
/// at one time with nothing between the two.
bool X11GlobalHotkey::takeAsRepeat(const xcb_key_press_event_t &press)
{
    if (press.detail == m_last.keycode && (m_last.isDown || press.time == m_last.releaseTime)) {
        m_last.isDown = true;
        return true;
    }
    if (!m_last.isDown)
        m_last.keycode = 0;
    return false;
}

bool X11GlobalHotkey::released(const xcb_key_release_event_t &release)
{
    if (release.detail != m_last.keycode || !m_last.isDown)
        return false;
    m_last.isDown = false;
    m_last.releaseTime = release.time;
    return true;
}

void X11GlobalHotkey::focusedIn(const xcb_focus_in_event_t &focusIn)
{
    const bool isReal =
        focusIn.mode == XCB_NOTIFY_MODE_NORMAL || focusIn.mode == XCB_NOTIFY_MODE_WHILE_GRABBED;
    if (!isReal || focusIn.detail == XCB_NOTIFY_DETAIL_POINTER || !m_holdGuard.isActive())
        return;
    // Queued: the window hears of its focus first.
    QMetaObject::invokeMethod(this, &X11GlobalHotkey::keyboardTaken, Qt::QueuedConnection);
}

void X11GlobalHotkey::mappingChanged()
{
    if (m_isRegrabDue)
        return;
    m_isRegrabDue = true;
    QMetaObject::invokeMethod(this, &X11GlobalHotkey::start, Qt::QueuedConnection);
}

/// Asks the server: Qt takes a window for active before it has the focus, and for a while after it has lost
/// it.
bool X11GlobalHotkey::hasFocus() const
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    return reply && (reply->focus & ~setup->resource_id_mask) == setup->resource_id_base;
}

void X11GlobalHotkey::keyboardTaken()
{
    if (m_holdGuard.isActive() && hasFocus())
        letKeysGo();
}

void X11GlobalHotkey::letKeysGo()
{
    m_holdGuard.stop();
    // With the focus here the grab ends now, not with the key: the window has lost the focus to the grab, and
    // Qt soon takes that for real. Without it the grab has to stay, since nothing else tells when the key
    // goes up.
    if (hasFocus())
        xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    else
        xcb_allow_events(m_connection, XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

} // namespace quillbay::platform
