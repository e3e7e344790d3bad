#pragma once

#include "analytics/Network.h"
#include "analytics/StoredEntity.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// What a batch holds, which says where it goes.
using FlushType = PersistenceType;

/// "/track/", "/engage/" or "/groups/".
std::string_view pathOf(FlushType type);

/// Seconds to wait before the next request: `retryAfter`, where it is there and its whole text is a finite
/// number; from the second failure in a row at least 60 * 2^(failures - 1) + jitter, which is kept within 60
/// and 600.
/// `jitter` is a whole number from 0 to 29.
double retryDelay(int consecutiveFailures, const std::optional<std::string> &retryAfter, int jitter);

/// Sends one batch at a time, and keeps the back-off, which lasts as long as the process.
/// Thread: the instance's network queue, which `sendRequest` blocks until the answer is there or the time is
/// up. The other calls may come from any thread.
class FlushRequest
{
public:
    /// What a test replaces.
    struct Surroundings
    {
        std::shared_ptr<Network> network;
        std::function<double()> clock; ///< Seconds since 1970.
        std::function<int()> jitter;   ///< A random whole number from 0 to 29.
        std::chrono::milliseconds bound = std::chrono::seconds(120);
    };
    static Surroundings defaultSurroundings();

    /// `serverURL` is the base URL of the service, without a path; empty where there is no service.
    explicit FlushRequest(std::string serverURL, Surroundings surroundings = defaultSurroundings());

    std::string serverURL() const;
    void setServerURL(std::string url);

    /// Posts the batch, a JSON text; true when the service took it (a rejection in the answer included: it
    /// would be repeated for ever). Without a service it answers false and nothing else happens. Only events
    /// are compressed. A header or query item of the caller comes after the own ones; a header replaces.
    bool sendRequest(std::string requestData, FlushType type, bool useIP, const HttpFields &headers,
                     const HttpFields &queryItems, bool useGzipCompression);

    /// Whether the back-off still lasts: nothing may be sent now.
    bool requestNotAllowed() const;
    int networkConsecutiveFailures() const;
    double networkRequestsAllowedAfterTime() const; ///< Seconds since 1970.

private:
    void updateRetryDelay(bool isSuccess, const std::optional<std::string> &retryAfter);

    mutable std::mutex m_mutex; ///< For what follows, `m_surroundings` excepted.
    std::string m_serverURL;
    int m_networkConsecutiveFailures = 0;
    double m_networkRequestsAllowedAfterTime = 0;
    const Surroundings m_surroundings;
};

} // namespace quillbay
