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

/// Sends the request and waits for the answer, until `stop` is requested. It goes out once: Qt by itself
/// repeats one whose connection was cut, which here would post a batch several times.
/// Thread: any without an event loop of its own; it runs one meanwhile. A QCoreApplication must exist.
///
/// Qt Network does it, and not libcurl, whose two dozen libraries the loader would map at each start of the
/// program (some 8 ms), for a request seconds later.
HttpAnswer exchangeHttp(const UrlRequest &request, std::size_t answerLimit, const std::stop_token &stop);

} // namespace quillbay
