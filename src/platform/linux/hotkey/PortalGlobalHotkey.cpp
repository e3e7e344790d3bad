#include "platform/linux/hotkey/PortalGlobalHotkey.h"

#include "platform/Platform.h"
#include "platform/linux/desktop/Portal.h"
#include "platform/linux/hotkey/PortalShortcut.h"

#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace quillbay::platform {

namespace {

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString shortcutId = QStringLiteral("show");

QDBusMessage shortcutsCall(const QString &method)
{
    return QDBusMessage::createMethodCall(portal::service, portal::path, shortcutsInterface, method);
}

/// The portals disagree with their own description about the type of a path.
QString pathOf(const QVariant &value)
{
    return value.canConvert<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path() : value.toString();
}

} // namespace

PortalGlobalHotkey::PortalGlobalHotkey(const QDBusConnection &bus, QObject *parent)
    : GlobalHotkey(parent)
    , m_bus(bus)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    m_portal.setConnection(m_bus);
    m_portal.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_portal, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        m_session.clear();
        fail(QStringLiteral("the desktop portal has ended"));
    });
}

PortalGlobalHotkey::~PortalGlobalHotkey()
{
    closeSession();
}

bool PortalGlobalHotkey::isAvailable() const
{
    return m_bus.isConnected();
}

void PortalGlobalHotkey::registerKey(QKeyCombination key)
{
    m_key = key;
    QMetaObject::invokeMethod(this, &PortalGlobalHotkey::sayWhoWeAre, Qt::QueuedConnection);
}

/// A program started outside a sandbox has no name for the portal unless it gives one. Older portals do not
/// have the call, and it comes too late where another of our calls was first; the portal then goes by the
/// name of the service manager's unit. So the answer does not matter.
void PortalGlobalHotkey::sayWhoWeAre()
{
    if (!isAvailable()) {
        fail(QStringLiteral("there is no session bus"));
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        portal::service, portal::path, QStringLiteral("org.freedesktop.host.portal.Registry"),
        QStringLiteral("Register"));
    message << QString::fromLatin1(applicationId) << QVariantMap();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        createSession();
    });
}

void PortalGlobalHotkey::createSession()
{
    const QVariantMap options{
        {QStringLiteral("handle_token"),
         subscribe(SLOT(onCreateSessionResponse(uint, QVariantMap, QDBusMessage)))},
        {QStringLiteral("session_handle_token"), portal::newToken()},
    };
    call(shortcutsCall(QStringLiteral("CreateSession")) << options);
}

/// Connects to the answer of a request that is yet to be made, and returns the token to make it with.
QString PortalGlobalHotkey::subscribe(const char *responseSlot)
{
    const QString token = portal::newToken();
    m_bus.connect(QString(), portal::requestPath(m_bus, token), portal::requestInterface,
                  QStringLiteral("Response"), this, responseSlot);
    return token;
}

void PortalGlobalHotkey::call(const QDBusMessage &message, std::function<void()> then)
{
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, then = std::move(then)] {
        watcher->deleteLater();
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isError())
            failWith(reply.error());
        else if (then)
            then();
    });
}

void PortalGlobalHotkey::onCreateSessionResponse(uint code, const QVariantMap &results,
                                                 const QDBusMessage &message)
{
    if (code != 0) {
        failAsAnswered(code);
        return;
    }
    m_session = pathOf(results.value(QStringLiteral("session_handle")));
    const QString portal = message.service();
    m_portal.addWatchedService(portal);
    m_bus.connect(portal, m_session, sessionInterface, QStringLiteral("Closed"), this,
                  SLOT(onSessionClosed()));
    m_bus.connect(portal, portal::path, shortcutsInterface, QStringLiteral("Activated"), this,
                  SLOT(onActivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    bind();
}

void PortalGlobalHotkey::bind()
{
    PortalShortcut shortcut{shortcutId, {{QStringLiteral("description"), tr("Show Quillbay")}}};
    const QString trigger = portalTrigger(m_key);
    if (!trigger.isEmpty())
        shortcut.properties.insert(QStringLiteral("preferred_trigger"), trigger);
    const QString token = subscribe(SLOT(onBindResponse(uint, QVariantMap)));
    call(shortcutsCall(QStringLiteral("BindShortcuts"))
         << QDBusObjectPath(m_session) << QVariant::fromValue(QList<PortalShortcut>{shortcut}) << QString()
         << QVariantMap{{QStringLiteral("handle_token"), token}});
}

void PortalGlobalHotkey::onBindResponse(uint code, const QVariantMap &results)
{
    if (code != 0) {
        failAsAnswered(code);
        return;
    }
    const auto shortcuts = qdbus_cast<QList<PortalShortcut>>(results.value(QStringLiteral("shortcuts")));
    for (const PortalShortcut &shortcut : shortcuts) {
        if (shortcut.id == shortcutId) {
            const QString key = shortcut.properties.value(QStringLiteral("trigger_description")).toString();
            Q_EMIT registered(QStringLiteral("desktop portal"), key);
            return;
        }
    }
    fail(QStringLiteral("the desktop bound no key"));
}

void PortalGlobalHotkey::onActivated(const QDBusObjectPath &session, const QString &id, qulonglong,
                                     const QVariantMap &options)
{
    if (session.path() == m_session && id == shortcutId)
        Q_EMIT activated(options.value(QStringLiteral("activation_token")).toString());
}

void PortalGlobalHotkey::onSessionClosed()
{
    m_session.clear();
    fail(QStringLiteral("the desktop has taken the key back"));
}

void PortalGlobalHotkey::fail(const QString &reason)
{
    closeSession();
    m_portal.setWatchedServices({});
    Q_EMIT failed(reason);
}

void PortalGlobalHotkey::closeSession()
{
    if (m_session.isEmpty())
        return;
    QDBusMessage message =
        QDBusMessage::createMethodCall(portal::service, m_session, sessionInterface, QStringLiteral("Close"));
    message.setAutoStartService(false);
    m_bus.send(message);
    m_session.clear();
}

void PortalGlobalHotkey::failWith(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::NotSupported:
        fail(
            QStringLiteral("this desktop gives programs no global keys; bind a key of its own to the command "
                           "\"gapplication launch %1\"")
                .arg(QLatin1String(applicationId)));
        return;
    default:
        fail(QStringLiteral("%1: %2").arg(error.name(), error.message()));
    }
}

void PortalGlobalHotkey::failAsAnswered(uint code)
{
    fail(code == 1 ? QStringLiteral("the user did not allow the key")
                   : QStringLiteral("the desktop broke off the request"));
}

} // namespace quillbay::platform
