#include "platform/linux/desktop/PortalAppearance.h"

#include "platform/linux/desktop/Portal.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPointer>
#include <QThreadPool>

#include <utility>

namespace quillbay::platform {

namespace {

constexpr char settingsInterface[] = "org.freedesktop.portal.Settings";

enum Setting : std::size_t { ColorScheme, ReducedMotion, EnableAnimations, IconTheme };

struct SettingName
{
    QLatin1String group;
    QLatin1String key;
};

constexpr SettingName settingNames[] = {
    {QLatin1String("org.freedesktop.appearance"), QLatin1String("color-scheme")},
    {QLatin1String("org.freedesktop.appearance"), QLatin1String("reduced-motion")},
    {QLatin1String("org.gnome.desktop.interface"), QLatin1String("enable-animations")},
    {QLatin1String("org.gnome.desktop.interface"), QLatin1String("icon-theme")},
};

/// The value inside any number of variants; the bus itself allows 64.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = QVariant(value.value<QDBusVariant>().variant());
    return value;
}

/// `value` if it is one that the setting can have, else an invalid one.
QVariant checked(std::size_t setting, const QVariant &value)
{
    const int type = value.typeId();
    switch (setting) {
    case ColorScheme:
    case ReducedMotion:
        return type == QMetaType::UInt || type == QMetaType::Int ? value : QVariant();
    case EnableAnimations:
        return type == QMetaType::Bool ? value : QVariant();
    default:
        return type == QMetaType::QString && isThemeName(value.toString()) ? value : QVariant();
    }
}

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection &bus, std::chrono::milliseconds timeout,
                                   QObject *parent)
    : Appearance(parent)
    , m_bus(bus)
    , m_timeout(timeout)
    , m_filesSource(DesktopSettingsSource::fromEnvironment())
{
    static_assert(std::size(settingNames) == settingCount);
    if (m_bus.isConnected())
        followPortal();
    else
        readFiles();
}

void PortalAppearance::followPortal()
{
    auto *watcher =
        new QDBusServiceWatcher(portal::service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (!owner.isEmpty() && std::exchange(m_portal, owner) != owner)
                    readAll();
            });
    // Without a sender's name: naming it makes the library ask the bus for the owner, and wait. The slot
    // checks it.
    const bool followed =
        m_bus.connect(QString(), portal::path, QLatin1String(settingsInterface),
                      QStringLiteral("SettingChanged"), this, SLOT(onSettingChanged(QDBusMessage)));
    if (!followed)
        qWarning("The desktop's changes of looks cannot be followed");
    readAll();
}

void PortalAppearance::readAll()
{
    for (std::size_t setting = 0; setting < settingCount; ++setting)
        read(setting);
}

void PortalAppearance::read(std::size_t setting)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        portal::service, portal::path, QLatin1String(settingsInterface), QStringLiteral("Read"));
    call << QString(settingNames[setting].group) << QString(settingNames[setting].key);
    auto *watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(call, static_cast<int>(m_timeout.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, setting] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        const bool answered = reply.type() == QDBusMessage::ReplyMessage && reply.arguments().size() == 1;
        if (answered)
            m_portal = reply.service();
        store(setting, answered ? checked(setting, unwrapped(reply.arguments().constFirst())) : QVariant());
    });
}

void PortalAppearance::onSettingChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (message.service() != m_portal || message.signature() != QLatin1String("ssv"))
        return;
    const QString group = arguments[0].toString();
    const QString key = arguments[1].toString();
    for (std::size_t setting = 0; setting < settingCount; ++setting) {
        if (group != settingNames[setting].group || key != settingNames[setting].key)
            continue;
        if (const QVariant value = checked(setting, unwrapped(arguments[2])); value.isValid())
            store(setting, value);
    }
}

void PortalAppearance::store(std::size_t setting, const QVariant &value)
{
    m_told[setting] = value;
    if (!value.isValid())
        readFiles();
    publish();
}

void PortalAppearance::readFiles()
{
    if (std::exchange(m_filesAsked, true))
        return;
    // The object may go while the worker reads, so the worker only ever passes the pointer on.
    QThreadPool::globalInstance()->start([source = m_filesSource, guard = QPointer<PortalAppearance>(this)] {
        const DesktopSettings settings = readDesktopSettings(source);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [guard, settings] {
                if (!guard)
                    return;
                guard->m_files = settings;
                guard->publish();
            },
            Qt::QueuedConnection);
    });
}

void PortalAppearance::publish()
{
    State next;
    next.dark =
        m_told[ColorScheme].isValid() ? m_told[ColorScheme].toUInt() == 1 : m_files.dark.value_or(false);
    const QVariant &animations = m_told[EnableAnimations];
    const bool reducedTold = m_told[ReducedMotion].isValid() || animations.isValid();
    next.reducedMotion =
        reducedTold ? m_told[ReducedMotion].toUInt() == 1 || (animations.isValid() && !animations.toBool())
                    : m_files.reducedMotion.value_or(false);
    next.iconTheme = m_told[IconTheme].isValid() ? m_told[IconTheme].toString() : m_files.iconTheme;

    const State old = std::exchange(m_state, std::move(next));
    if (old.dark != m_state.dark)
        Q_EMIT darkChanged();
    if (old.reducedMotion != m_state.reducedMotion)
        Q_EMIT reducedMotionChanged();
    if (old.iconTheme != m_state.iconTheme)
        Q_EMIT iconThemeChanged();
}

} // namespace quillbay::platform
