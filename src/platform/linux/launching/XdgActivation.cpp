#include "platform/linux/launching/XdgActivation.h"

#include "xdg-activation-v1-client-protocol.h"

#include <QTimer>

#include <algorithm>
#include <cstring>
#include <utility>

#include <unistd.h>
#include <wayland-client.h>

namespace quillbay::platform {

namespace {

// Version 3 has all that is listened to, and orderly destruction of the devices; later events need not be
// known.
constexpr quint32 seatVersion = 3;

} // namespace

struct XdgActivation::Seat
{
    Seat(XdgActivation *activation, wl_registry *registry, quint32 globalName, quint32 version)
        : owner(activation)
        , name(globalName)
        , seat(static_cast<wl_seat *>(
              wl_registry_bind(registry, globalName, &wl_seat_interface, std::min(version, seatVersion))))
    {
        static const wl_seat_listener listener = {
            [](void *data, wl_seat *, quint32 capabilities) {
                static_cast<Seat *>(data)->setCapabilities(capabilities);
            },
            [](void *, wl_seat *, const char *) {},
        };
        wl_seat_add_listener(seat, &listener, this);
    }

    ~Seat()
    {
        setCapabilities(0);
        wl_seat_destroy(seat);
    }
    Seat(const Seat &) = delete;
    Seat &operator=(const Seat &) = delete;

    void input(quint32 newSerial)
    {
        serial = newSerial;
        order = ++owner->m_inputs;
    }

    void setCapabilities(quint32 capabilities)
    {
        follow(capabilities & WL_SEAT_CAPABILITY_KEYBOARD, keyboard, wl_seat_get_keyboard, keyboardListener(),
               wl_keyboard_add_listener, wl_keyboard_release, wl_keyboard_destroy);
        follow(capabilities & WL_SEAT_CAPABILITY_POINTER, pointer, wl_seat_get_pointer, pointerListener(),
               wl_pointer_add_listener, wl_pointer_release, wl_pointer_destroy);
        follow(capabilities & WL_SEAT_CAPABILITY_TOUCH, touch, wl_seat_get_touch, touchListener(),
               wl_touch_add_listener, wl_touch_release, wl_touch_destroy);
    }

    template <typename Device, typename Listener>
    void follow(bool present, Device *&device, Device *(*get)(wl_seat *), const Listener &listener,
                int (*listen)(Device *, const Listener *, void *), void (*release)(Device *),
                void (*destroy)(Device *))
    {
        if (present && !device) {
            device = get(seat);
            listen(device, &listener, this);
        } else if (!present && device) {
            const bool orderly = wl_seat_get_version(seat) >= seatVersion;
            (orderly ? release : destroy)(std::exchange(device, nullptr));
        }
    }

    static const wl_keyboard_listener &keyboardListener()
    {
        static const wl_keyboard_listener listener = [] {
            wl_keyboard_listener result = {};
            result.keymap = [](void *, wl_keyboard *, quint32, int descriptor, quint32) {
                close(descriptor);
            };
            result.enter = [](void *data, wl_keyboard *, quint32 serial, wl_surface *, wl_array *) {
                static_cast<Seat *>(data)->input(serial);
            };
            result.leave = [](void *, wl_keyboard *, quint32, wl_surface *) {};
            result.key = [](void *data, wl_keyboard *, quint32 serial, quint32, quint32, quint32) {
                static_cast<Seat *>(data)->input(serial);
            };
            result.modifiers = [](void *, wl_keyboard *, quint32, quint32, quint32, quint32, quint32) {};
            return result;
        }();
        return listener;
    }

    static const wl_pointer_listener &pointerListener()
    {
        static const wl_pointer_listener listener = [] {
            wl_pointer_listener result = {};
            result.enter = [](void *, wl_pointer *, quint32, wl_surface *, wl_fixed_t, wl_fixed_t) {};
            result.leave = [](void *, wl_pointer *, quint32, wl_surface *) {};
            result.motion = [](void *, wl_pointer *, quint32, wl_fixed_t, wl_fixed_t) {};
            result.button = [](void *data, wl_pointer *, quint32 serial, quint32, quint32, quint32) {
                static_cast<Seat *>(data)->input(serial);
            };
            result.axis = [](void *, wl_pointer *, quint32, quint32, wl_fixed_t) {};
            return result;
        }();
        return listener;
    }

    static const wl_touch_listener &touchListener()
    {
        static const wl_touch_listener listener = [] {
            wl_touch_listener result = {};
            result.down = [](void *data, wl_touch *, quint32 serial, quint32, wl_surface *, qint32,
                             wl_fixed_t, wl_fixed_t) { static_cast<Seat *>(data)->input(serial); };
            result.up = [](void *data, wl_touch *, quint32 serial, quint32, qint32) {
                static_cast<Seat *>(data)->input(serial);
            };
            result.motion = [](void *, wl_touch *, quint32, qint32, wl_fixed_t, wl_fixed_t) {};
            result.frame = [](void *, wl_touch *) {};
            result.cancel = [](void *, wl_touch *) {};
            return result;
        }();
        return listener;
    }

    XdgActivation *owner;
    quint32 name;
    wl_seat *seat;
    wl_keyboard *keyboard = nullptr;
    wl_pointer *pointer = nullptr;
    wl_touch *touch = nullptr;
    quint32 serial = 0;
    quint64 order = 0; // Zero: no input yet.
};

struct XdgActivation::Pending
{
    Pending(XdgActivation *activation, Answer receiver)
        : owner(activation)
        , token(xdg_activation_v1_get_activation_token(activation->m_activation))
        , guard(new QTimer(activation))
        , answer(std::move(receiver))
    {
    }
    ~Pending()
    {
        xdg_activation_token_v1_destroy(token);
        guard->stop();
        guard->deleteLater(); // It may be what ends this.
    }
    Pending(const Pending &) = delete;
    Pending &operator=(const Pending &) = delete;

    XdgActivation *owner;
    xdg_activation_token_v1 *token;
    QTimer *guard;
    Answer answer;
};

const wl_registry_listener XdgActivation::registryListener = {
    [](void *data, wl_registry *, quint32 name, const char *interface, quint32 version) {
        static_cast<XdgActivation *>(data)->announced(name, interface, version);
    },
    [](void *data, wl_registry *, quint32 name) { static_cast<XdgActivation *>(data)->withdrawn(name); },
};

XdgActivation::XdgActivation(wl_display *display, int patience, QObject *parent)
    : QObject(parent)
    , m_display(display)
    , m_registry(wl_display_get_registry(display))
    , m_patience(patience)
{
    wl_registry_add_listener(m_registry, &registryListener, this);
    wl_display_flush(m_display);
}

XdgActivation::~XdgActivation()
{
    while (!m_pending.empty())
        finish(m_pending.back().get(), QString());
    m_seats.clear();
    if (m_activation)
        xdg_activation_v1_destroy(m_activation);
    wl_registry_destroy(m_registry);
    wl_display_flush(m_display);
}

void XdgActivation::announced(quint32 name, const char *interface, quint32 version)
{
    if (std::strcmp(interface, xdg_activation_v1_interface.name) == 0 && !m_activation) {
        m_activation = static_cast<xdg_activation_v1 *>(
            wl_registry_bind(m_registry, name, &xdg_activation_v1_interface, 1));
        m_activationName = name;
    } else if (std::strcmp(interface, wl_seat_interface.name) == 0) {
        m_seats.push_back(std::make_unique<Seat>(this, m_registry, name, version));
    }
}

void XdgActivation::withdrawn(quint32 name)
{
    if (m_activation && name == m_activationName)
        xdg_activation_v1_destroy(std::exchange(m_activation, nullptr));
    std::erase_if(m_seats, [name](const std::unique_ptr<Seat> &seat) { return seat->name == name; });
}

void XdgActivation::request(wl_surface *surface, const QString &applicationId, Answer answer)
{
    if (!m_activation) {
        answer(QString());
        return;
    }
    static const xdg_activation_token_v1_listener listener = {
        [](void *data, xdg_activation_token_v1 *, const char *token) {
            auto *pending = static_cast<Pending *>(data);
            pending->owner->finish(pending, QString::fromUtf8(token));
        },
    };
    Pending *pending = m_pending.emplace_back(std::make_unique<Pending>(this, std::move(answer))).get();
    xdg_activation_token_v1_add_listener(pending->token, &listener, pending);

    const auto latest =
        std::max_element(m_seats.begin(), m_seats.end(),
                         [](const auto &one, const auto &other) { return one->order < other->order; });
    if (latest != m_seats.end() && (*latest)->order > 0)
        xdg_activation_token_v1_set_serial(pending->token, (*latest)->serial, (*latest)->seat);
    if (surface)
        xdg_activation_token_v1_set_surface(pending->token, surface);
    if (!applicationId.isEmpty())
        xdg_activation_token_v1_set_app_id(pending->token, applicationId.toUtf8().constData());
    xdg_activation_token_v1_commit(pending->token);
    wl_display_flush(m_display);

    pending->guard->setSingleShot(true);
    connect(pending->guard, &QTimer::timeout, this, [this, pending] { finish(pending, QString()); });
    pending->guard->start(m_patience);
}

void XdgActivation::finish(Pending *pending, const QString &token)
{
    const auto found = std::find_if(m_pending.begin(), m_pending.end(),
                                    [pending](const auto &each) { return each.get() == pending; });
    if (found == m_pending.end())
        return;
    const std::unique_ptr<Pending> ended = std::move(*found);
    m_pending.erase(found);
    ended->answer(token);
}

} // namespace quillbay::platform
