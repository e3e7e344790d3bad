#pragma once

#include "analytics/Network.h"

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>

namespace quillbay {

/// How a request went.
struct HttpAnswer
{
    std::optional<HttpResponse> response; ///< Where the headers came.
    std::string body;                     ///< Where all went well.
    std::string error;                    ///< Empty where all went well; a status other than 200 is no error.
};

/// Sends the request once, over a connection of its own, and waits for the answer, until `stop` is requested.
/// Over https the certificate must be known to the system and made out to the host.
/// Thread: any without an event loop of its own; it runs one meanwhile. A QCoreApplication must exist.
///
/// On Qt's sockets. QNetworkAccessManager was tried: it repeats a request whose connection was cut, and reads
/// headers without an end until the memory is full. libcurl brings two dozen libraries, which the loader
/// would map at each start of the program (some 8 ms).
HttpAnswer exchangeHttp(const UrlRequest &request, std::size_t answerLimit, const std::stop_token &stop);

} // namespace quillbay
