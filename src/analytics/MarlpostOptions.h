#pragma once

#include "analytics/AutomaticProperties.h"
#include "analytics/Flush.h"
#include "analytics/FlushRequest.h"
#include "analytics/MarlpostPersistence.h"
#include "analytics/MarlpostType.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillbay {

/// What a proxy wants beside a request: later headers replace the client's own.
struct ServerProxyResource
{
    HttpFields headers;
    HttpFields queryItems;
};

class MarlpostProxyServerDelegate
{
public:
    virtual ~MarlpostProxyServerDelegate() = default;
    /// Asked for each queue that is sent. Thread: the instance's network queue.
    virtual ServerProxyResource resourceForNewRequest(const std::string &instanceName) = 0;
};

/// A server that takes the place of the built-in one.
struct ProxyServerConfig
{
    std::string serverURL;
    std::weak_ptr<MarlpostProxyServerDelegate> delegate;
};

/// How an instance is started.
struct MarlpostOptions
{
    std::string token;
    double flushInterval = 60;               ///< Seconds; 0 for no timer.
    std::optional<std::string> instanceName; ///< The token where there is none.
    bool optOutTrackingByDefault = false;    ///< Unless the user has chosen already.
    bool useUniqueDistinctId = false;        ///< A random id in place of the machine's.
    MarlpostDictionary superProperties;
    std::optional<ProxyServerConfig> proxyServerConfig;
    bool useGzipCompression = false;
};

/// What an instance stands on.
struct MarlpostSurroundings
{
    std::shared_ptr<const platform::DeviceIdentity> device;
    AutomaticProperties::AppVersion appVersion;
    MarlpostPersistence::Places places = MarlpostPersistence::defaultPlaces();
    FlushRequest::Surroundings flush = FlushRequest::defaultSurroundings(); ///< The clock is everyone's.
    std::string builtInServer = builtInServerURL(); ///< Where no proxy takes its place.
};

} // namespace quillbay
