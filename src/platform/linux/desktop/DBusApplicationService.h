#pragma once

#include "platform/ApplicationService.h"
#include "platform/linux/desktop/ApplicationAdaptor.h"
#include "platform/linux/desktop/InstanceLock.h"

#include <QDBusConnection>

#include <chrono>
#include <optional>
#include <vector>

namespace quillbay::platform {

/// The program on the session bus: its name is the application id, its object the id as a path, its interface
/// `org.freedesktop.Application`. Whoever owns the name is the one instance.
///
/// May be made and claimed before the application object exists; calls that arrive meanwhile are delivered
/// once an event loop runs and `start` was called. The object is on the bus before the name is: a call that
/// made the bus start this program arrives at the same moment as the name.
///
/// The activation token that this process itself was given in its environment is handed on with a forwarded
/// call, and taken out of the environment: at once by a process that is not the instance, by `start` in the
/// one that is. Until then the window system's own start-up needs it there.
class DBusApplicationService final : public ApplicationService
{
    Q_OBJECT

public:
    /// Calls that can wait for delivery; more are refused.
    static constexpr std::size_t maximumWaiting = 100;

    /// `timeout` bounds each of the at most six calls to the bus and to the other instance.
    explicit DBusApplicationService(const QDBusConnection &bus,
                                    std::chrono::milliseconds timeout = std::chrono::seconds(5));
    ~DBusApplicationService() override;

    Claim claim(const QStringList &urls) override;
    void start() override;

private:
    enum class NameRequest { Owned, Taken, Failed };

    NameRequest requestName();
    /// Nothing when the other instance ended before it could answer.
    std::optional<Claim> forward(const QStringList &urls);
    Claim claimByLock();
    bool take(ApplicationCall call);
    void deliver();

    QDBusConnection m_bus;
    std::chrono::milliseconds m_timeout;
    InstanceLock m_lock;
    std::vector<ApplicationCall> m_waiting;
    bool m_started = false;
    bool m_deliveryDue = false;
};

} // namespace quillbay::platform
