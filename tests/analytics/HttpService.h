#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quillbay::testing {

/// A service on the loopback, on threads of its own, that answers as it is told and records what it got.
/// Sockets and standard threads alone.
class HttpService
{
public:
    struct Request
    {
        std::string method;
        std::string target;                         ///< Path and query as they came.
        std::map<std::string, std::string> headers; ///< Names in lower case.
        std::string body;
    };
    enum class Ending {
        Whole,        ///< The answer, then the end of the connection.
        CutUnread,    ///< The connection is reset as soon as the request begins to come; nothing is recorded.
        CutUnheard,   ///< Read and recorded, then the end without a byte of an answer.
        CutInBody,    ///< The headers promise more than comes.
        Silence,      ///< No answer until the service goes.
        EndlessBody,  ///< Bytes until nobody reads them.
        EndlessHeader ///< The same, before the headers are over.
    };
    struct Reply
    {
        int status = 200;
        std::string body = "1";
        std::string fields; ///< Further header lines, each with its line end.
        Ending ending = Ending::Whole;
    };
    /// Which reply the request gets; requests count from 0. Called on a thread of the service; for each also
    /// with -1 and an empty request, before it is read.
    using Script = std::function<Reply(const Request &request, int number)>;

    explicit HttpService(Script script = {});
    /// The same reply for all.
    explicit HttpService(Reply reply);
    ~HttpService();
    HttpService(const HttpService &) = delete;
    HttpService &operator=(const HttpService &) = delete;

    /// Its base URL, without a path.
    std::string url() const;
    /// From here on, for requests whose answer has not begun.
    void setReply(Reply reply);
    /// No connection is taken any more.
    void refuse();

    std::vector<Request> requests() const;
    /// How many connections were made.
    int connections() const;
    /// Whether so many requests have come, or come within a bound.
    bool waitForRequests(std::size_t count) const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace quillbay::testing
