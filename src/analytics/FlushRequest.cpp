#include "analytics/FlushRequest.h"

#include "analytics/Gzip.h"
#include "analytics/MarlpostLogger.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <condition_variable>
#include <random>
#include <utility>

namespace quillbay {

namespace {

constexpr double ShortestBackOff = 60; // seconds
constexpr double LongestBackOff = 600;
constexpr int MaximumJitter = 29;
/// From here on the bound decides.
constexpr int MaximumExponent = 10;

/// How a request ended, handed from its thread to the one that waits.
struct Outcome
{
    bool isSuccess = false;
    int result = 0;
    Reason reason;
    std::optional<std::string> retryAfter;
};

struct Semaphore
{
    std::mutex mutex;
    std::condition_variable signalled;
    std::optional<Outcome> outcome;

    void signal(Outcome value)
    {
        const std::lock_guard lock(mutex);
        outcome = std::move(value);
        signalled.notify_one();
    }

    std::optional<Outcome> wait(std::chrono::milliseconds bound)
    {
        std::unique_lock lock(mutex);
        signalled.wait_for(lock, bound, [this] { return outcome.has_value(); });
        return outcome;
    }
};

std::optional<double> wholeNumberText(const std::string &text)
{
    double value = 0;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data() + (text.starts_with('+') ? 1 : 0), end, value);
    const bool isWhole = result.ec == std::errc() && result.ptr == end && std::isfinite(value);
    return isWhole ? std::optional(value) : std::nullopt;
}

/// The answer to a batch: 1 when all was taken, 0 when some was rejected, which is also what anything else
/// than a number means.
int integerOf(std::string_view body)
{
    int value = 0;
    const auto result = std::from_chars(body.data(), body.data() + body.size(), value);
    return result.ec == std::errc() && result.ptr == body.data() + body.size() ? value : 0;
}

void setHeader(HttpFields &headers, const std::pair<std::string, std::string> &field)
{
    const auto own = std::find_if(headers.begin(), headers.end(),
                                  [&](const auto &header) { return header.first == field.first; });
    if (own == headers.end())
        headers.push_back(field);
    else
        own->second = field.second;
}

std::optional<std::string> retryAfterOf(const HttpResponse &response)
{
    return response.header("retry-after");
}

} // namespace

std::string_view pathOf(FlushType type)
{
    switch (type) {
    case FlushType::Events:
        return "/track/";
    case FlushType::People:
        return "/engage/";
    case FlushType::Groups:
        return "/groups/";
    }
    return {};
}

double retryDelay(int consecutiveFailures, const std::optional<std::string> &retryAfter, int jitter)
{
    const double wanted = retryAfter ? wholeNumberText(*retryAfter).value_or(0) : 0;
    if (consecutiveFailures < 2)
        return wanted;
    const int exponent = std::min(consecutiveFailures - 1, MaximumExponent);
    const double backOff = std::ldexp(60.0, exponent) + jitter;
    return std::max(wanted, std::clamp(backOff, ShortestBackOff, LongestBackOff));
}

FlushRequest::Surroundings FlushRequest::defaultSurroundings()
{
    Surroundings surroundings;
    surroundings.network = std::make_shared<Network>();
    surroundings.clock = [] {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    };
    surroundings.jitter = [] {
        std::random_device source;
        return std::uniform_int_distribution<int>(0, MaximumJitter)(source);
    };
    return surroundings;
}

FlushRequest::FlushRequest(std::string serverURL, Surroundings surroundings)
    : m_serverURL(std::move(serverURL))
    , m_surroundings(std::move(surroundings))
{
}

std::string FlushRequest::serverURL() const
{
    const std::lock_guard lock(m_mutex);
    return m_serverURL;
}

void FlushRequest::setServerURL(std::string url)
{
    const std::lock_guard lock(m_mutex);
    m_serverURL = std::move(url);
}

bool FlushRequest::sendRequest(std::string requestData, FlushType type, bool useIP, const HttpFields &headers,
                               const HttpFields &queryItems, bool useGzipCompression)
{
    const std::string base = serverURL();
    if (base.empty())
        return false;
    Resource resource;
    resource.path = pathOf(type);
    resource.headers = {{"Content-Type", "application/json"}};
    for (const auto &header : headers)
        setHeader(resource.headers, header);
    if (useGzipCompression && type == FlushType::Events) {
        auto compressed = gzipCompressed(requestData);
        if (auto *body = std::get_if<std::string>(&compressed)) {
            setHeader(resource.headers, {"Content-Encoding", "gzip"});
            requestData = std::move(*body);
        } else {
            MarlpostLogger::error("Failed to compress data with gzip: ",
                                  std::get<GzipError>(compressed).message);
        }
    }
    resource.requestBody = std::move(requestData);
    resource.queryItems = {{"ip", useIP ? "1" : "0"}};
    resource.queryItems.insert(resource.queryItems.end(), queryItems.begin(), queryItems.end());
    resource.parse = integerOf;

    // Shared: an answer may come after the wait for it has ended.
    const auto semaphore = std::make_shared<Semaphore>();
    std::stop_source stop;
    m_surroundings.network->apiRequest(
        base, std::move(resource),
        [semaphore](const Reason &reason, const std::optional<HttpResponse> &response) {
            semaphore->signal({false, 0, reason, response ? retryAfterOf(*response) : std::nullopt});
        },
        [semaphore](int result, const HttpResponse &response) {
            semaphore->signal({true, result, {}, retryAfterOf(response)});
        },
        stop.get_token());
    auto outcome = semaphore->wait(m_surroundings.bound);
    stop.request_stop();
    if (!outcome)
        outcome = Outcome{false, 0, {Reason::Kind::Other, 0, "no answer in time"}, {}};
    updateRetryDelay(outcome->isSuccess, outcome->retryAfter);
    if (!outcome->isSuccess)
        MarlpostLogger::warning("API request to ", pathOf(type), " has failed with reason ",
                                outcome->reason.description());
    else if (outcome->result == 0)
        MarlpostLogger::info(pathOf(type), " api rejected some items");
    return outcome->isSuccess;
}

void FlushRequest::updateRetryDelay(bool isSuccess, const std::optional<std::string> &retryAfter)
{
    const std::lock_guard lock(m_mutex);
    m_networkConsecutiveFailures = isSuccess ? 0 : m_networkConsecutiveFailures + 1;
    m_networkRequestsAllowedAfterTime =
        m_surroundings.clock() +
        retryDelay(m_networkConsecutiveFailures, retryAfter, m_surroundings.jitter());
}

bool FlushRequest::requestNotAllowed() const
{
    return networkRequestsAllowedAfterTime() > m_surroundings.clock();
}

int FlushRequest::networkConsecutiveFailures() const
{
    const std::lock_guard lock(m_mutex);
    return m_networkConsecutiveFailures;
}

double FlushRequest::networkRequestsAllowedAfterTime() const
{
    const std::lock_guard lock(m_mutex);
    return m_networkRequestsAllowedAfterTime;
}

} // namespace quillbay
