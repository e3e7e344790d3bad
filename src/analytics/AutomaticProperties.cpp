#include "analytics/AutomaticProperties.h"

#include "platform/DeviceIdentity.h"

#include <utility>

namespace quillbay {

namespace {

std::string orUnknown(const std::string &text)
{
    return text.empty() ? "Unknown" : text;
}

} // namespace

AutomaticProperties::AutomaticProperties(std::shared_ptr<const platform::DeviceIdentity> device,
                                         AppVersion appVersion)
    : m_device(std::move(device))
    , m_appVersion{orUnknown(appVersion.version), orUnknown(appVersion.build)}
{
    if (const QSize screen = m_device->screenSize(); !screen.isEmpty()) {
        m_screenWidth = screen.width();
        m_screenHeight = screen.height();
    }
}

const MarlpostDictionary &AutomaticProperties::properties() const
{
    std::call_once(m_automaticPropertiesLock, [this] { build(); });
    return m_properties;
}

const MarlpostDictionary &AutomaticProperties::peopleProperties() const
{
    std::call_once(m_automaticPropertiesLock, [this] { build(); });
    return m_peopleProperties;
}

void AutomaticProperties::build() const
{
    const std::string osVersion = orUnknown(m_device->osVersion().toStdString());
    const std::string model = orUnknown(m_device->model().toStdString());
    m_properties = {{"$os", "macOS"},
                    {"$os_version", osVersion},
                    {"$screen_height", m_screenHeight},
                    {"$screen_width", m_screenWidth},
                    {"$app_build_number", m_appVersion.build},
                    {"$app_version_string", m_appVersion.version},
                    {"mp_lib", "swift"},
                    {"$lib_version", LibraryVersion},
                    {"$manufacturer", "Apple"},
                    {"$model", model}};
    m_peopleProperties = {{"$ios_app_version", m_appVersion.build},
                          {"$ios_app_release", m_appVersion.version},
                          {"$ios_device_model", model},
                          {"$ios_version", osVersion},
                          {"$ios_lib_version", LibraryVersion},
                          {"$swift_lib_version", LibraryVersion}};
}

} // namespace quillbay
