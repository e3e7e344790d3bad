// Who the user is, and whether anything of them is recorded.

#include "analytics/MainQueue.h"
#include "analytics/MarlpostInstance.h"
#include "analytics/MarlpostLogger.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace quillbay {

namespace {

bool isBlank(const std::string &text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isspace(c) != 0; });
}

} // namespace

void MarlpostInstance::identify(const std::string &distinctId, bool usePeople, Completion completion)
{
    if (hasOptedOutTracking()) {
        MainQueue::async(std::move(completion));
        return;
    }
    onTrackingQueue(
        [distinctId, usePeople, completion = std::move(completion), epoch = now()](MarlpostInstance &self) {
            self.setIdentity(distinctId, usePeople, epoch);
            MainQueue::async(completion);
        });
}

void MarlpostInstance::setIdentity(const std::string &distinctId, bool usePeople, double epochInterval)
{
    if (hasOptedOutTracking())
        return;
    if (isBlank(distinctId)) {
        MarlpostLogger::error(" cannot identify blank distinct id");
        return;
    }
    const std::optional<std::string> oldDistinctId = m_globalLock.write([&]() -> std::optional<std::string> {
        if (m_identity.distinctID == distinctId)
            return std::nullopt;
        m_identity.userId = distinctId;
        return std::exchange(m_identity.distinctID, distinctId);
    });
    if (oldDistinctId && identity().anonymousId)
        saveEvent("$identify", {{"$anon_distinct_id", *oldDistinctId}}, epochInterval);
    if (usePeople) {
        m_globalLock.write([&] { m_identity.peopleDistinctID = distinctId; });
        m_persistence->identifyPeople();
    }
    m_persistence->saveIdentity(identity());
}

void MarlpostInstance::createAlias(const std::string &alias, const std::string &distinctId, bool usePeople,
                                   bool andIdentify, Completion completion)
{
    if (hasOptedOutTracking()) {
        MainQueue::async(std::move(completion));
        return;
    }
    if (alias == distinctId) {
        MarlpostLogger::error("alias: ", alias, " matches distinctId: ", distinctId, " - skipping api call.");
        MainQueue::async(std::move(completion));
        return;
    }
    if (alias.empty()) {
        MarlpostLogger::error(" create alias called with empty alias");
        MainQueue::async(std::move(completion));
        return;
    }
    onTrackingQueue([alias, distinctId, usePeople, andIdentify, completion = std::move(completion),
                     epoch = now()](MarlpostInstance &self) {
        if (!self.hasOptedOutTracking()) {
            self.saveEvent("$create_alias", {{"distinct_id", distinctId}, {"alias", alias}}, epoch);
            self.m_globalLock.write([&] { self.m_identity.alias = alias; });
            self.m_persistence->saveIdentity(self.identity());
            if (andIdentify)
                self.setIdentity(distinctId, usePeople, epoch);
        }
        MainQueue::async(completion);
    });
}

void MarlpostInstance::reset(Completion completion)
{
    onTrackingQueue([completion = std::move(completion)](MarlpostInstance &self) {
        self.forgetUser();
        self.m_sessionMetadata.reset();
        MainQueue::async(completion);
    });
}

void MarlpostInstance::forgetUser()
{
    ++m_forgettings;
    m_persistence->resetEntities();
    m_globalLock.write([this] {
        m_superProperties.clear();
        m_timedEvents.clear();
        m_groups.clear();
        m_identity = {};
        m_identity.anonymousId = freshDeviceId();
        m_identity.distinctID = distinctIdOf(*m_identity.anonymousId);
    });
    m_persistence->saveSuperProperties({});
    m_persistence->saveTimedEvents({});
    m_persistence->saveIdentity(identity());
}

void MarlpostInstance::optOutTracking()
{
    m_globalLock.write([this] { m_optOutStatus = true; });
    onTrackingQueue([](MarlpostInstance &self) { self.optOutNow(); });
}

void MarlpostInstance::optOutNow()
{
    forgetUser();
    m_persistence->saveOptOutStatusFlag(true);
}

void MarlpostInstance::optInTracking(const std::optional<std::string> &distinctId,
                                     MarlpostDictionary properties)
{
    if (!assertPropertyTypes(properties))
        return;
    m_globalLock.write([this] { m_optOutStatus = false; });
    onTrackingQueue(
        [distinctId, properties = std::move(properties), epoch = now()](MarlpostInstance &self) mutable {
            self.m_persistence->saveOptOutStatusFlag(false);
            if (distinctId)
                self.setIdentity(*distinctId, true, epoch);
            self.saveEvent("$opt_in", std::move(properties), epoch);
        });
}

bool MarlpostInstance::hasOptedOutTracking() const
{
    return m_globalLock.read([this] { return m_optOutStatus.value_or(false); });
}

} // namespace quillbay
