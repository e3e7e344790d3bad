#pragma once

#include <functional>
#include <map>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbay {

using HttpFields = std::vector<std::pair<std::string, std::string>>;

/// One request to the service. Texts are UTF-8.
struct Resource
{
    std::string path;            ///< Appended to the base: "/track/".
    std::string method = "post"; ///< "get" or "post".
    std::optional<std::string> requestBody;
    HttpFields queryItems;
    HttpFields headers;
    /// The answer's body as the result; nothing where it cannot be read.
    std::function<std::optional<int>(std::string_view body)> parse;
};

/// Why a request failed.
struct Reason
{
    enum class Kind {
        ParseError,      ///< The body could not be read.
        NoData,          ///< The body did not come, or not all of it: `error` tells why.
        NotOKStatusCode, ///< `status` is not 200.
        Other,           ///< No answer: `error` tells why.
    };
    Kind kind = Kind::Other;
    int status = 0;
    std::string error;

    std::string description() const;
};

/// What came back beside the body.
struct HttpResponse
{
    int status = 0;
    /// Names in lower case; of a repeated one the first counts.
    std::map<std::string, std::string> headers;

    std::optional<std::string> header(const std::string &lowerCaseName) const;
};

struct UrlRequest
{
    std::string url;
    std::string method; ///< "GET" or "POST".
    HttpFields headers;
    std::optional<std::string> body;
};

/// HTTP requests to the collection service, one thread for each while it runs.
///
/// Over https the certificate and its host name are checked; plain http goes to this machine alone. Redirects
/// are not followed: they are failures as every status but 200. An answer beyond `AnswerLimit` bytes, body or
/// headers, is a failure.
/// Thread: any. The handlers run on the request's own thread, exactly one of them, exactly once.
class Network
{
public:
    static constexpr std::size_t AnswerLimit = 1024 * 1024;

    using Failure = std::function<void(const Reason &reason, const std::optional<HttpResponse> &response)>;
    using Success = std::function<void(int result, const HttpResponse &response)>;

    virtual ~Network() = default;

    /// Starts the request and returns. `stop` ends it early, as a failure of the kind `Other`. A test may
    /// replace it.
    virtual void apiRequest(const std::string &base, Resource resource, Failure failure, Success success,
                            std::stop_token stop);

    /// The base and the path, the query items percent-encoded with "+" as "%2B", method, headers and body.
    /// Nothing where the base is not an https URL, or http to this machine.
    static std::optional<UrlRequest> buildURLRequest(const std::string &base, const Resource &resource);

    /// How many requests run now, in the whole process. While there are some, the process should end by
    /// std::_Exit after `main`: nobody waits for them, and they use libraries that the ordinary end takes
    /// apart.
    static int runningRequests();
};

} // namespace quillbay
