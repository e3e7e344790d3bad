#pragma once

#include "analytics/Flush.h"
#include "analytics/Group.h"
#include "analytics/MarlpostOptions.h"
#include "analytics/People.h"
#include "analytics/ReadWriteLock.h"
#include "analytics/RecordQueue.h"
#include "analytics/SerialQueue.h"
#include "analytics/SessionMetadata.h"
#include "analytics/Track.h"

#include <QMetaObject>

#include <array>
#include <deque>
#include <map>
#include <set>

namespace quillbay {

/// One project's client: who the user is, what goes with every event, and the way of the entities into the
/// store and to the service.
///
/// Every call returns at once and fails towards nobody. What it asks for happens on the tracking queue, in
/// the order of the calls; the getters tell what has happened there. Only the opting out holds from the call
/// itself on. Completions run on the main thread, always, also where nothing was to be done. Thread: any, but
/// for `create`, which belongs to the main thread. The instance may be let go at any time: what is queued is
/// still stored, and nobody waits.
class MarlpostInstance final : public FlushDelegate,
                               public RecordQueue,
                               public std::enable_shared_from_this<MarlpostInstance>
{
public:
    using Completion = std::function<void()>;

    /// Reads what is stored on the tracking queue, before anything else there; follows the application's
    /// coming and going.
    static std::shared_ptr<MarlpostInstance> create(const MarlpostOptions &options,
                                                    const MarlpostSurroundings &surroundings);
    ~MarlpostInstance() override;

    const std::string &apiToken() const { return m_apiToken; }
    const std::string &name() const { return m_name; }
    MarlpostIdentity identity() const;
    std::string distinctId() const { return identity().distinctID; }

    /// False drops, at each flush, the events whose name begins with "$ae_". At first true.
    bool trackAutomaticEventsEnabled() const { return m_trackAutomaticEventsEnabled; }
    void setTrackAutomaticEventsEnabled(bool enabled) { m_trackAutomaticEventsEnabled = enabled; }
    /// Of the log, for the whole process.
    bool loggingEnabled() const;
    void setLoggingEnabled(bool enabled);
    /// The server's URL, the interval and the size of batches.
    Flush &flushSettings() { return m_flush; }
    People &people() { return *m_people; }

    /// An empty name becomes "mp_event". Returns within microseconds; once the tracking queue has run, the
    /// event survives the sudden end of the process.
    void track(const std::string &event, MarlpostDictionary properties = {});
    /// The groups' values win over the properties.
    void trackWithGroups(const std::string &event, MarlpostDictionary properties,
                         const MarlpostDictionary &groups);

    /// Begins to time the event: the next one of that name carries the time since as "$duration".
    void time(const std::string &event);
    /// Seconds; 0 where the event is not being timed.
    double eventElapsedTime(const std::string &event) const;
    void clearTimedEvent(const std::string &event);
    void clearTimedEvents();

    /// Attributes to `distinctId` from now on. `usePeople` makes it the id of the profile as well, and lets
    /// the records go that were held back for it.
    void identify(const std::string &distinctId, bool usePeople = true, Completion completion = {});
    /// Makes `alias` another name of `distinctId`.
    void createAlias(const std::string &alias, const std::string &distinctId, bool usePeople = true,
                     bool andIdentify = true, Completion completion = {});
    /// Another user, a new device, an empty store, a new session.
    void reset(Completion completion = {});

    /// Sends the oldest rows of each kind, a batch or, for a full flush, all. A flush that is asked for while
    /// another one still sends begins after it, or both would load the same rows. Nothing happens while opted
    /// out, or without a service to send to.
    void flush(bool performFullFlush = false, Completion completion = {}) override;

    void registerSuperProperties(const MarlpostDictionary &properties);
    /// Sets those that are missing, or equal to `defaultValue` where there is one.
    void registerSuperPropertiesOnce(const MarlpostDictionary &properties,
                                     const std::optional<MarlpostType> &defaultValue = {});
    void unregisterSuperProperty(const std::string &property);
    void clearSuperProperties();
    MarlpostDictionary currentSuperProperties() const;

    /// Forgets everything that is stored, and records and sends nothing until the user opts in again; over
    /// restarts.
    void optOutTracking();
    void optInTracking(const std::optional<std::string> &distinctId = {}, MarlpostDictionary properties = {});
    /// What was chosen in an earlier run is known once the tracking queue has read it; nothing is recorded
    /// before that.
    bool hasOptedOutTracking() const;

    /// The groups the user belongs to: a super property and a property of the profile, each a list of ids.
    void setGroup(const std::string &groupKey, const MarlpostArray &groupIDs);
    void addGroup(const std::string &groupKey, const MarlpostType &groupID);
    void removeGroup(const std::string &groupKey, const MarlpostType &groupID);
    /// The profile of a group; the same object for the same group.
    std::shared_ptr<Group> getGroup(const std::string &groupKey, const MarlpostType &groupID);

    /// Stops the timer and flushes; starts it again.
    void applicationWillResignActive();
    void applicationDidBecomeActive();

    /// Bounded waits for tests and benchmarks.
    const SerialQueue &trackingQueue() const { return m_trackingQueue; }
    const SerialQueue &networkQueue() const { return m_networkQueue; }

    // For Flush, People and Group.
    bool maySend() const override;
    void flushSuccess(FlushType type, std::vector<std::int32_t> ids) override;
    double now() const override { return m_clock(); }
    void addRecord(PersistenceType type, Builder build) override;

private:
    struct PendingFlush
    {
        bool isFull;
        Completion completion;
    };
    using Queues = std::array<StoredEntities, AllPersistenceTypes.size()>;

    MarlpostInstance(const MarlpostOptions &options, const MarlpostSurroundings &surroundings);
    void start(const MarlpostOptions &options);
    void observe();
    /// Queues `task(*this)`, and keeps this object until it has run.
    template <typename Task>
    void onTrackingQueue(Task task)
    {
        m_trackingQueue.async([self = shared_from_this(), task = std::move(task)]() mutable { task(*self); });
    }

    // On the tracking queue.
    void unarchive(const MarlpostOptions &options);
    std::string defaultDeviceId() const;
    static std::string freshDeviceId();
    static std::string distinctIdOf(const std::string &deviceId);
    void saveEvent(const std::string &event, MarlpostDictionary properties, double epochInterval);
    void setIdentity(const std::string &distinctId, bool usePeople, double epochInterval);
    void forgetUser();
    void optOutNow();
    void changeSuperProperties(const std::function<void(MarlpostDictionary &)> &change);
    void changeTimedEvents(const std::function<void(MarlpostDictionary &)> &change);
    void flushNext();
    StoredEntities loadUnsent(PersistenceType type, bool isFull);
    /// Deletes these rows, and those that could not be deleted before.
    void removeTaken(PersistenceType type, const std::vector<std::int32_t> &ids);
    // On the network queue.
    void flushQueue(StoredEntities queue, FlushType type);

    const std::string m_apiToken;
    const std::string m_name;
    const MPDB::Clock m_clock;
    const std::shared_ptr<const platform::DeviceIdentity> m_device;
    const bool m_useUniqueDistinctId;
    const std::weak_ptr<MarlpostProxyServerDelegate> m_proxyServerDelegate;
    const std::shared_ptr<const AutomaticProperties> m_automaticProperties;
    SerialQueue m_trackingQueue;
    SerialQueue m_networkQueue;
    std::atomic_bool m_trackAutomaticEventsEnabled = true;

    ReadWriteLock m_globalLock; ///< "com.marlpost.globallock": for the next five.
    MarlpostIdentity m_identity;
    MarlpostDictionary m_superProperties;
    MarlpostDictionary m_timedEvents;
    std::optional<bool> m_optOutStatus;
    std::map<std::string, std::shared_ptr<Group>> m_groups;

    // The tracking queue's.
    std::shared_ptr<MarlpostPersistence> m_persistence;
    SessionMetadata m_sessionMetadata;
    std::deque<PendingFlush> m_pendingFlushes;
    bool m_isFlushing = false;
    /// Rows that the service took and that could not be deleted: a store that cannot be written would have
    /// them sent again and again.
    std::array<std::set<std::int32_t>, AllPersistenceTypes.size()> m_taken;

    std::atomic_int m_forgettings = 0; ///< How often the store was emptied.
    int m_forgettingsAtLoad = 0;       ///< Of the rows being sent; the network queue's.
    const Track m_track;
    std::unique_ptr<People> m_people;
    Flush m_flush;
    QMetaObject::Connection m_stateChanges;
};

} // namespace quillbay
