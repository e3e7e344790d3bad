#pragma once

#include "analytics/Network.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillbay {

/// Reads one HTTP/1.1 answer as its bytes come, and gives up beyond a limit, which covers headers and body
/// each. Thread: one at a time.
class HttpAnswerReader
{
public:
    enum class State { Head, Body, Done, Failed };

    explicit HttpAnswerReader(std::size_t limit)
        : m_limit(limit)
    {
    }

    /// Takes what came; what follows after the end of the answer is ignored.
    State add(std::string_view bytes);
    /// The connection has ended: done, where the answer has no other end, or failed.
    State end();

    State state() const { return m_state; }
    /// Once the head was there.
    const std::optional<HttpResponse> &response() const { return m_response; }
    /// Whole when the state is `Done`.
    const std::string &body() const { return m_body; }
    /// Why it failed.
    const std::string &error() const { return m_error; }

private:
    enum class Framing { Length, Chunks, UntilEnd };

    State fail(const char *why);
    State readHead();
    bool parseHead(std::string_view head);
    State readBody();
    State readChunks();

    const std::size_t m_limit;
    State m_state = State::Head;
    Framing m_framing = Framing::UntilEnd;
    std::size_t m_length = 0; ///< Of the body, with a framing by length.
    std::string m_pending;    ///< Not read yet.
    std::optional<HttpResponse> m_response;
    std::string m_body;
    std::string m_error;
};

} // namespace quillbay
