#pragma once

#include "analytics/MarlpostType.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

class RecordQueue;

/// The profile of a group of users at the service: the members of company "Acme", for example. Every call
/// returns at once; when the instance is gone, or the user opted out, nothing happens. Thread: any.
class Group
{
public:
    Group(std::string apiToken, std::string groupKey, MarlpostType groupID, std::weak_ptr<RecordQueue> queue);

    const std::string &groupKey() const { return m_groupKey; }
    const MarlpostType &groupID() const { return m_groupID; }

    void set(const MarlpostDictionary &properties);
    /// Only what the profile does not have yet.
    void setOnce(const MarlpostDictionary &properties);
    void unset(const std::string &property);
    /// Takes the value out of the list `key`.
    void remove(const std::string &key, const MarlpostType &value);
    /// Adds to the list `key` those of the values that it lacks.
    void unionValues(const std::string &key, const MarlpostArray &values);
    void deleteGroup();

private:
    void addGroupRecordToQueueWithAction(std::string_view action, MarlpostType properties);
    void addDictionary(std::string_view action, const MarlpostDictionary &properties);

    const std::string m_apiToken;
    const std::string m_groupKey;
    const MarlpostType m_groupID;
    const std::weak_ptr<RecordQueue> m_queue;
};

} // namespace quillbay
