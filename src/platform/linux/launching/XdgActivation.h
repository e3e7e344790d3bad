#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct wl_display;
struct wl_registry;
struct wl_registry_listener;
struct wl_surface;
struct xdg_activation_v1;

namespace quillbay::platform {

/// The client's side of the protocol `xdg-activation-v1`, on a connection that somebody else opened and
/// dispatches. It listens to the seats itself, since the serial of the user's last input is what makes a
/// compositor believe a request, and Qt before 6.5 does not tell it.
///
/// Thread: the one that dispatches the connection's default queue. Goes before the connection does.
class XdgActivation : public QObject
{
    Q_OBJECT

public:
    using Answer = std::function<void(const QString &token)>;

    /// How long a compositor may take to answer.
    static constexpr int defaultPatience = 200; // milliseconds

    explicit XdgActivation(wl_display *display, int patience = defaultPatience, QObject *parent = nullptr);
    ~XdgActivation() override;

    /// Whether the compositor has announced the protocol. Only known once the connection was dispatched.
    bool isOffered() const { return m_activation != nullptr; }

    /// Asks for a token for `applicationId`, on behalf of `surface` (may be null) and the last input. Calls
    /// `answer` exactly once, with an empty token if the protocol is not offered or nobody answers in time.
    void request(wl_surface *surface, const QString &applicationId, Answer answer);

private:
    struct Seat;
    struct Pending;

    static const wl_registry_listener registryListener;
    void announced(quint32 name, const char *interface, quint32 version);
    void withdrawn(quint32 name);
    void finish(Pending *pending, const QString &token);

    wl_display *m_display;
    wl_registry *m_registry = nullptr;
    xdg_activation_v1 *m_activation = nullptr;
    quint32 m_activationName = 0;
    int m_patience;
    quint64 m_inputs = 0; ///< Orders the inputs of several seats, since serials of unlike seats may wrap.
    std::vector<std::unique_ptr<Seat>> m_seats;
    std::vector<std::unique_ptr<Pending>> m_pending;
};

} // namespace quillbay::platform
