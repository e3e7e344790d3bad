#include "platform/linux/desktop/DBusApplicationService.h"

#include "platform/Platform.h"

#include <QDBusError>
#include <QDBusMessage>

#include <utility>

namespace quillbay::platform {

namespace {

constexpr char activationVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char startupVariable[] = "DESKTOP_STARTUP_ID";

// Of the bus's own interface: do not wait in line for a name, and what the answers mean.
constexpr uint doNotQueue = 4;
constexpr uint becameOwner = 1;
constexpr uint alreadyOwner = 4;

QString busName()
{
    return QLatin1String(applicationId);
}

QString objectPath()
{
    return QLatin1Char('/') + busName().replace(QLatin1Char('.'), QLatin1Char('/'));
}

QVariantMap platformData()
{
    QVariantMap data;
    if (const QString token = qEnvironmentVariable(activationVariable); !token.isEmpty())
        data.insert(QStringLiteral("activation-token"), token);
    if (const QString id = qEnvironmentVariable(startupVariable); !id.isEmpty())
        data.insert(QStringLiteral("desktop-startup-id"), id);
    return data;
}

void forgetEnvironment()
{
    qunsetenv(activationVariable);
    qunsetenv(startupVariable);
}

} // namespace

DBusApplicationService::DBusApplicationService(const QDBusConnection &bus, std::chrono::milliseconds timeout)
    : m_bus(bus)
    , m_timeout(timeout)
{
    new ApplicationAdaptor(this, m_bus, [this](ApplicationCall call) { return take(std::move(call)); });
}

DBusApplicationService::~DBusApplicationService()
{
    if (m_bus.isConnected())
        m_bus.unregisterObject(objectPath());
}

ApplicationService::Claim DBusApplicationService::claim(const QStringList &urls)
{
    Claim result = Claim::Refused;
    if (!m_bus.isConnected()) {
        result = claimByLock();
    } else {
        if (!m_bus.registerObject(objectPath(), this))
            qWarning("The application object is not on the session bus: its path is taken");
        std::optional<Claim> decided;
        for (int attempt = 0; attempt < 3 && !decided; ++attempt) {
            const NameRequest request = requestName();
            if (request == NameRequest::Taken)
                decided = forward(urls);
            else
                decided = request == NameRequest::Owned ? Claim::Primary : claimByLock();
        }
        result = decided.value_or(Claim::Refused);
    }
    if (result != Claim::Primary) {
        m_bus.unregisterObject(objectPath());
        forgetEnvironment();
    } else if (!urls.isEmpty()) {
        ApplicationCall own;
        own.kind = ApplicationCall::Kind::Open;
        own.urls = urls;
        take(std::move(own));
    }
    return result;
}

DBusApplicationService::NameRequest DBusApplicationService::requestName()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    call << busName() << doNotQueue;
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, static_cast<int>(m_timeout.count()));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) {
        qWarning("The session bus does not give out names: %s", qUtf8Printable(reply.errorMessage()));
        return NameRequest::Failed;
    }
    const uint answer = reply.arguments().constFirst().toUInt();
    return answer == becameOwner || answer == alreadyOwner ? NameRequest::Owned : NameRequest::Taken;
}

std::optional<ApplicationService::Claim> DBusApplicationService::forward(const QStringList &urls)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(busName(), objectPath(), QStringLiteral("org.freedesktop.Application"),
                                       urls.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!urls.isEmpty())
        call << urls;
    call << platformData();
    call.setAutoStartService(false);
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, static_cast<int>(m_timeout.count()));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return Claim::Forwarded;
    const QDBusError error(reply);
    if (error.type() == QDBusError::ServiceUnknown || error.name().endsWith(QLatin1String(".NameHasNoOwner")))
        return std::nullopt;
    qWarning("Quillbay runs already, but does not answer: %s", qUtf8Printable(error.message()));
    return Claim::Refused;
}

ApplicationService::Claim DBusApplicationService::claimByLock()
{
    const QString folder = InstanceLock::privateFolder();
    const auto outcome = folder.isEmpty() ? InstanceLock::Outcome::Unavailable
                                          : m_lock.acquire(folder, QStringLiteral("quillbay.lock"));
    switch (outcome) {
    case InstanceLock::Outcome::Held:
        return Claim::Primary;
    case InstanceLock::Outcome::Taken:
        qWarning("Quillbay runs already, and there is no session bus to call it over");
        return Claim::Refused;
    case InstanceLock::Outcome::Unavailable:
        break;
    }
    qWarning("Neither a session bus nor a folder for a lock: cannot tell whether Quillbay runs already");
    return Claim::Primary;
}

void DBusApplicationService::start()
{
    forgetEnvironment();
    m_started = true;
    deliver();
}

bool DBusApplicationService::take(ApplicationCall call)
{
    if (m_waiting.size() >= maximumWaiting)
        return false;
    m_waiting.push_back(std::move(call));
    if (m_started && !std::exchange(m_deliveryDue, true))
        QMetaObject::invokeMethod(this, &DBusApplicationService::deliver, Qt::QueuedConnection);
    return true;
}

void DBusApplicationService::deliver()
{
    m_deliveryDue = false;
    for (const ApplicationCall &call : std::exchange(m_waiting, {})) {
        switch (call.kind) {
        case ApplicationCall::Kind::Open:
            Q_EMIT opened(call.urls);
            [[fallthrough]];
        case ApplicationCall::Kind::Activate:
            Q_EMIT activated(call.activationToken);
            break;
        case ApplicationCall::Kind::Action:
            Q_EMIT actionRequested(call.action, call.parameters);
            break;
        }
    }
}

} // namespace quillbay::platform
