#include "analytics/MarlpostInstance.h"

#include "analytics/MarlpostLogger.h"
#include "analytics/PropertyNotifications.h"
#include "foundation/Uuid.h"
#include "platform/DeviceIdentity.h"

#include <QGuiApplication>

#include <utility>

namespace quillbay {

namespace {

std::string serverURL(const MarlpostOptions &options, const MarlpostSurroundings &surroundings)
{
    return options.proxyServerConfig ? options.proxyServerConfig->serverURL : surroundings.builtInServer;
}

std::string queueLabel(const std::string &name, const char *queue)
{
    return "com.marlpost." + name + "." + queue + ")";
}

} // namespace

std::shared_ptr<MarlpostInstance> MarlpostInstance::create(const MarlpostOptions &options,
                                                           const MarlpostSurroundings &surroundings)
{
    const std::shared_ptr<MarlpostInstance> instance(new MarlpostInstance(options, surroundings));
    instance->start(options);
    return instance;
}

MarlpostInstance::MarlpostInstance(const MarlpostOptions &options, const MarlpostSurroundings &surroundings)
    : m_apiToken(options.token)
    , m_name(options.instanceName.value_or(options.token))
    , m_clock(surroundings.flush.clock)
    , m_device(surroundings.device)
    , m_useUniqueDistinctId(options.useUniqueDistinctId)
    , m_proxyServerDelegate(options.proxyServerConfig ? options.proxyServerConfig->delegate
                                                      : std::weak_ptr<MarlpostProxyServerDelegate>())
    , m_automaticProperties(
          std::make_shared<AutomaticProperties>(surroundings.device, surroundings.appVersion))
    , m_trackingQueue(queueLabel(m_name, "tracking"))
    , m_networkQueue(queueLabel(m_name, "network"))
    , m_persistence(std::make_shared<MarlpostPersistence>(
          m_name, surroundings.places,
          MarlpostPersistence::Options{m_clock, serverURL(options, surroundings).empty()}))
    , m_sessionMetadata(m_trackingQueue, m_clock)
    , m_track(m_apiToken, m_automaticProperties)
    , m_flush(serverURL(options, surroundings), options.useGzipCompression, surroundings.flush)
{
}

MarlpostInstance::~MarlpostInstance()
{
    QObject::disconnect(m_stateChanges);
    // The store ends on its own thread, after what is still queued.
    m_trackingQueue.async([persistence = std::move(m_persistence)] {});
}

void MarlpostInstance::start(const MarlpostOptions &options)
{
    m_people = std::make_unique<People>(m_apiToken, m_automaticProperties, weak_from_this());
    m_flush.setDelegate(weak_from_this());
    onTrackingQueue([options](MarlpostInstance &self) { self.unarchive(options); });
    m_flush.setFlushInterval(options.flushInterval);
    observe();
}

void MarlpostInstance::observe()
{
    PropertyNotifications::addObserver(
        weak_from_this(), [this](std::string_view name, const MarlpostDictionary &properties) {
            if (name == PropertyNotifications::Register)
                registerSuperProperties(properties);
            else if (name == PropertyNotifications::Unregister)
                onTrackingQueue([properties](MarlpostInstance &self) {
                    self.changeSuperProperties([&properties](MarlpostDictionary &all) {
                        for (const auto &[key, value] : properties)
                            all.remove(key);
                    });
                });
        });
    if (const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        m_stateChanges = QObject::connect(
            application, &QGuiApplication::applicationStateChanged, application,
            [weak = weak_from_this(), wasActive = QGuiApplication::applicationState() ==
                                                  Qt::ApplicationActive](Qt::ApplicationState state) mutable {
                const std::shared_ptr<MarlpostInstance> self = weak.lock();
                const bool isActive = state == Qt::ApplicationActive;
                if (!self || isActive == std::exchange(wasActive, isActive))
                    return;
                if (isActive)
                    self->applicationDidBecomeActive();
                else
                    self->applicationWillResignActive();
            });
    }
}

void MarlpostInstance::unarchive(const MarlpostOptions &options)
{
    m_persistence->migrate();
    const std::optional<bool> optOutStatus = m_persistence->loadOptOutStatusFlag();
    MarlpostIdentity identity = m_persistence->loadIdentity();
    MarlpostDictionary superProperties = m_persistence->loadSuperProperties();
    MarlpostDictionary timedEvents = m_persistence->loadTimedEvents();

    const bool optsOut = m_globalLock.write([&] {
        const bool isUndecided = !m_optOutStatus && !optOutStatus;
        const bool isOptingOut = isUndecided && options.optOutTrackingByDefault;
        if (!m_optOutStatus)
            m_optOutStatus = isOptingOut ? true : optOutStatus;
        return isOptingOut;
    });
    if (identity.distinctID.empty()) {
        // Nobody who opted out is to be recognised: the machine is not even asked.
        identity.anonymousId = hasOptedOutTracking() ? freshDeviceId() : defaultDeviceId();
        identity.distinctID = distinctIdOf(*identity.anonymousId);
        m_persistence->saveIdentity(identity);
    } else if (!identity.anonymousId && !identity.hadPersistedDistinctId) {
        identity.hadPersistedDistinctId = true;
        m_persistence->saveIdentity(identity);
    }
    m_globalLock.write([&] {
        m_identity = std::move(identity);
        m_superProperties = std::move(superProperties);
        m_timedEvents = std::move(timedEvents);
    });
    if (optsOut)
        optOutNow();
    if (!options.superProperties.isEmpty())
        changeSuperProperties([&options](MarlpostDictionary &all) { all.merge(options.superProperties); });
}

std::string MarlpostInstance::defaultDeviceId() const
{
    const std::optional<QString> id = m_useUniqueDistinctId ? std::nullopt : m_device->applicationDeviceId();
    return id ? id->toStdString() : freshDeviceId();
}

std::string MarlpostInstance::freshDeviceId()
{
    return uuidString(QUuid::createUuid()).toStdString();
}

std::string MarlpostInstance::distinctIdOf(const std::string &deviceId)
{
    return "$device:" + deviceId;
}

MarlpostIdentity MarlpostInstance::identity() const
{
    return m_globalLock.read([this] { return m_identity; });
}

bool MarlpostInstance::loggingEnabled() const
{
    return MarlpostLogger::isEnabled();
}

void MarlpostInstance::setLoggingEnabled(bool enabled)
{
    if (!enabled)
        MarlpostLogger::debug("MarlpostLogging Disabled");
    MarlpostLogger::setEnabled(enabled);
    if (enabled)
        MarlpostLogger::debug("MarlpostLogging Enabled");
}

void MarlpostInstance::applicationWillResignActive()
{
    m_flush.applicationWillResignActive();
    flush();
}

void MarlpostInstance::applicationDidBecomeActive()
{
    m_flush.startFlushTimer();
}

} // namespace quillbay
