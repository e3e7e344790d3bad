#include "analytics/Network.h"

#include "analytics/HttpExchange.h"
#include "analytics/MarlpostLogger.h"

#include <QHostAddress>
#include <QUrl>

#include <atomic>
#include <thread>

namespace quillbay {

namespace {

std::atomic_int running = 0;

bool isLoopback(const QString &host)
{
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

std::string encoded(const std::string &text)
{
    return QUrl::toPercentEncoding(QString::fromStdString(text)).toStdString();
}

int failureStatus(const HttpAnswer &answer)
{
    return answer.response ? answer.response->status : 0;
}

void deliver(const HttpAnswer &answer, const Resource &resource, const Network::Failure &failure,
             const Network::Success &success)
{
    constexpr int Ok = 200;
    const int status = failureStatus(answer);
    if (!answer.response)
        return failure({Reason::Kind::Other, 0, answer.error}, {});
    if (status != Ok)
        return failure({Reason::Kind::NotOKStatusCode, status, {}}, answer.response);
    if (!answer.error.empty())
        return failure({Reason::Kind::NoData, status, answer.error}, answer.response);
    const auto result = resource.parse(answer.body);
    if (!result)
        return failure({Reason::Kind::ParseError, status, {}}, answer.response);
    success(*result, *answer.response);
}

} // namespace

std::string Reason::description() const
{
    switch (kind) {
    case Kind::ParseError:
        return "parseError";
    case Kind::NoData:
        return "noData";
    case Kind::NotOKStatusCode:
        return "notOKStatusCode(" + std::to_string(status) + ')';
    case Kind::Other:
        return "other(" + error + ')';
    }
    return {};
}

std::optional<std::string> HttpResponse::header(const std::string &lowerCaseName) const
{
    const auto field = headers.find(lowerCaseName);
    return field == headers.end() ? std::nullopt : std::optional(field->second);
}

std::optional<UrlRequest> Network::buildURLRequest(const std::string &base, const Resource &resource)
{
    QUrl url(QString::fromStdString(base), QUrl::StrictMode);
    const bool isSecure = url.scheme() == QLatin1String("https");
    const bool isLocal = url.scheme() == QLatin1String("http") && isLoopback(url.host());
    if (!url.isValid() || url.host().isEmpty() || !(isSecure || isLocal))
        return {};
    QString path = url.path();
    while (path.endsWith(QLatin1Char('/')))
        path.chop(1);
    url.setPath(path + QString::fromStdString(resource.path));
    std::string query;
    for (const auto &[name, value] : resource.queryItems)
        query.append(query.empty() ? "" : "&").append(encoded(name)).append("=").append(encoded(value));
    url.setQuery(QString::fromStdString(query), QUrl::StrictMode);
    UrlRequest request = {url.toEncoded().toStdString(), resource.method == "get" ? "GET" : "POST",
                          resource.headers, resource.requestBody};
    MarlpostLogger::debug("Fetching URL ", request.url);
    return request;
}

int Network::runningRequests()
{
    return running;
}

void Network::apiRequest(const std::string &base, Resource resource, Failure failure, Success success,
                         std::stop_token stop)
{
    auto request = buildURLRequest(base, resource);
    resource.requestBody.reset();
    ++running;
    std::thread([request = std::move(request), resource = std::move(resource), failure = std::move(failure),
                 success = std::move(success), stop = std::move(stop)] {
        const HttpAnswer answer =
            request ? exchangeHttp(*request, AnswerLimit, stop) : HttpAnswer{{}, {}, "no URL to send to"};
        // The answer may be what lets the process end: by then this thread must not be counted any more.
        --running;
        deliver(answer, resource, failure, success);
    }).detach();
}

} // namespace quillbay
