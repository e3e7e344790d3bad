#pragma once

#include "analytics/MarlpostType.h"

#include <memory>
#include <mutex>
#include <string>

namespace quillbay {

namespace platform {
class DeviceIdentity;
}

/// What every entity says of the program and the machine. The fixed values ("mac", "swift") are the ones that
/// the service's reports know; they say nothing of this system.
/// Thread: any; the constructor on the main thread.
class AutomaticProperties
{
public:
    /// Where a text is empty, "Unknown" is sent.
    struct AppVersion
    {
        std::string version; ///< For people: "1.2".
        std::string build;
    };

    /// Reads the screen's size now, and the rest with the first look at the properties.
    AutomaticProperties(std::shared_ptr<const platform::DeviceIdentity> device, AppVersion appVersion);

    /// Of events. Valid as long as this object.
    const MarlpostDictionary &properties() const;
    /// Of "$set" and "$set_once" of people. Valid as long as this object.
    const MarlpostDictionary &peopleProperties() const;

    static constexpr char LibraryVersion[] = "4.4.0";

private:
    void build() const;

    const std::shared_ptr<const platform::DeviceIdentity> m_device;
    const AppVersion m_appVersion;
    int m_screenWidth = 0;
    int m_screenHeight = 0;
    mutable std::once_flag m_automaticPropertiesLock;
    mutable MarlpostDictionary m_properties;
    mutable MarlpostDictionary m_peopleProperties;
};

} // namespace quillbay
