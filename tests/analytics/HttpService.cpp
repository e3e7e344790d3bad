#include "analytics/HttpService.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

constexpr auto Bound = std::chrono::seconds(30);

bool sendAll(int socket, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t sent = ::send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        text.remove_prefix(std::size_t(sent));
    }
    return true;
}

std::optional<HttpService::Request> parseHead(std::string_view head)
{
    HttpService::Request request;
    std::size_t end = head.find("\r\n");
    const std::string_view first = head.substr(0, end);
    const std::size_t space = first.find(' ');
    const std::size_t second = first.find(' ', space + 1);
    if (second == std::string_view::npos)
        return {};
    request.method = first.substr(0, space);
    request.target = first.substr(space + 1, second - space - 1);
    while (end != std::string_view::npos) {
        head.remove_prefix(end + 2);
        end = head.find("\r\n");
        const std::string_view line = head.substr(0, end);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        std::string name(line.substr(0, colon));
        std::transform(name.begin(), name.end(), name.begin(), [](char c) { return char(std::tolower(c)); });
        std::string_view value = line.substr(colon + 1);
        value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
        request.headers[name] = value;
    }
    return request;
}

std::optional<HttpService::Request> readRequest(int socket)
{
    std::string text;
    std::optional<HttpService::Request> request;
    std::size_t bodyStart = 0;
    std::size_t bodySize = 0;
    char buffer[16384];
    while (!request || text.size() < bodyStart + bodySize) {
        const ssize_t got = ::recv(socket, buffer, sizeof buffer, 0);
        if (got <= 0)
            return {};
        text.append(buffer, std::size_t(got));
        const std::size_t end = text.find("\r\n\r\n");
        if (request || end == std::string::npos)
            continue;
        request = parseHead(std::string_view(text).substr(0, end));
        if (!request)
            return {};
        bodyStart = end + 4;
        bodySize = std::strtoul(request->headers["content-length"].c_str(), nullptr, 10);
    }
    request->body = text.substr(bodyStart, bodySize);
    return request;
}

} // namespace

struct HttpService::State
{
    mutable std::mutex mutex; ///< For what follows.
    mutable std::condition_variable changed;
    Script script;
    std::vector<Request> requests;
    std::set<int> sockets; ///< Of connections.
    std::vector<std::thread> threads;
    int connections = 0;
    bool isEnding = false;
    int listener = -1;
    int port = 0;

    void listen();
    void accept();
    void serve(int socket);
    void answer(int socket, const Reply &reply);
};

void HttpService::State::listen()
{
    listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *plain = reinterpret_cast<sockaddr *>(&address);
    if (listener < 0 || ::bind(listener, plain, size) != 0 || ::listen(listener, 16) != 0 ||
        ::getsockname(listener, plain, &size) != 0)
        std::abort();
    port = ntohs(address.sin_port);
}

void HttpService::State::accept()
{
    while (true) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        const std::lock_guard lock(mutex);
        if (isEnding) {
            ::close(socket);
            return;
        }
        ++connections;
        sockets.insert(socket);
        threads.emplace_back([this, socket] { serve(socket); });
    }
}

void HttpService::State::serve(int socket)
{
    std::unique_lock lock(mutex);
    const Script current = script;
    lock.unlock();
    if (current && current({}, -1).ending == Ending::CutUnread) {
        // Closing with bytes unread resets the connection.
        char first = 0;
        (void)::recv(socket, &first, 1, MSG_PEEK);
    } else if (const auto request = readRequest(socket)) {
        lock.lock();
        const int number = int(requests.size());
        requests.push_back(*request);
        const Script latest = script;
        changed.notify_all();
        lock.unlock();
        answer(socket, latest ? latest(*request, number) : Reply());
    }
    lock.lock();
    sockets.erase(socket);
    ::close(socket);
}

void HttpService::State::answer(int socket, const Reply &reply)
{
    const std::size_t promised = reply.body.size() + (reply.ending == Ending::CutInBody ? 100 : 0);
    const std::string head = "HTTP/1.1 " + std::to_string(reply.status) + " Status\r\n" + reply.fields;
    const std::string filler(65536, 'x');
    switch (reply.ending) {
    case Ending::Whole:
    case Ending::CutInBody:
        sendAll(socket, head + "Connection: close\r\nContent-Length: " + std::to_string(promised) +
                            "\r\n\r\n" + reply.body);
        break;
    case Ending::EndlessBody:
        sendAll(socket, head + "Connection: close\r\n\r\n");
        while (sendAll(socket, filler)) {
        }
        break;
    case Ending::EndlessHeader:
        sendAll(socket, head);
        while (sendAll(socket, "X-Filler: " + filler + "\r\n")) {
        }
        break;
    case Ending::Silence: {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isEnding; });
        break;
    }
    case Ending::CutUnread:
    case Ending::CutUnheard:
        break;
    }
}

HttpService::HttpService(Script script)
    : m_state(std::make_shared<State>())
{
    m_state->script = std::move(script);
    m_state->listen();
    const std::lock_guard lock(m_state->mutex);
    m_state->threads.emplace_back([state = m_state.get()] { state->accept(); });
}

HttpService::HttpService(Reply reply)
    : HttpService([reply](const Request &, int) { return reply; })
{
}

HttpService::~HttpService()
{
    refuse();
    std::unique_lock lock(m_state->mutex);
    m_state->isEnding = true;
    m_state->changed.notify_all();
    for (const int socket : m_state->sockets)
        ::shutdown(socket, SHUT_RDWR);
    std::vector<std::thread> threads = std::move(m_state->threads);
    lock.unlock();
    for (std::thread &thread : threads)
        thread.join();
    ::close(m_state->listener);
}

std::string HttpService::url() const
{
    return "http://127.0.0.1:" + std::to_string(m_state->port);
}

void HttpService::setReply(Reply reply)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->script = [reply = std::move(reply)](const Request &, int) { return reply; };
}

void HttpService::refuse()
{
    // The address stays taken, so that nobody else gets it; a connection to it is refused.
    ::shutdown(m_state->listener, SHUT_RDWR);
}

std::vector<HttpService::Request> HttpService::requests() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->requests;
}

int HttpService::connections() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->connections;
}

bool HttpService::waitForRequests(std::size_t count) const
{
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, Bound, [&] { return m_state->requests.size() >= count; });
}

} // namespace quillbay::testing
