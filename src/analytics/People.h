#pragma once

#include "analytics/MarlpostType.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

class AutomaticProperties;
class RecordQueue;

/// The profile of the user at the service. What is recorded before `MarlpostInstance::identify` is kept, and
/// held back until then. Every call returns at once; when the instance is gone, or the user opted out,
/// nothing happens. Thread: any.
class People
{
public:
    People(std::string apiToken, std::shared_ptr<const AutomaticProperties> automaticProperties,
           std::weak_ptr<RecordQueue> queue);

    void set(const MarlpostDictionary &properties);
    /// Only what the profile does not have yet.
    void setOnce(const MarlpostDictionary &properties);
    void unset(const std::vector<std::string> &properties);
    /// Adds numbers, negative ones too.
    void increment(const MarlpostDictionary &properties);
    /// Adds each value to the list of that name.
    void append(const MarlpostDictionary &properties);
    /// Takes each value out of the list of that name.
    void remove(const MarlpostDictionary &properties);
    /// Adds to the list of each name those of the values (arrays) that it lacks.
    void unionValues(const MarlpostDictionary &properties);
    /// `properties` go beside the amount and the time.
    void trackCharge(double amount, const MarlpostDictionary &properties = {});
    void clearCharges();
    void deleteUser();

private:
    void addPeopleRecordToQueueWithAction(std::string_view action, MarlpostType properties);
    void addDictionary(std::string_view action, const MarlpostDictionary &properties);

    const std::string m_apiToken;
    const std::shared_ptr<const AutomaticProperties> m_automaticProperties;
    const std::weak_ptr<RecordQueue> m_queue;
};

} // namespace quillbay
