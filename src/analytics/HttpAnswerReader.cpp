#include "analytics/HttpAnswerReader.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view HeadEnd = "\r\n\r\n";
/// Length and extensions of a chunk.
constexpr std::size_t LongestChunkLine = 1024;

std::optional<std::size_t> number(std::string_view text, int base)
{
    std::size_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? std::optional(value)
                                                                               : std::nullopt;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view Blank = " \t";
    const std::size_t first = text.find_first_not_of(Blank);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blank) - first + 1);
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace

HttpAnswerReader::State HttpAnswerReader::add(std::string_view bytes)
{
    if (m_state == State::Done || m_state == State::Failed)
        return m_state;
    m_pending += bytes;
    if (m_state == State::Head)
        readHead();
    return m_state == State::Body ? readBody() : m_state;
}

HttpAnswerReader::State HttpAnswerReader::end()
{
    if (m_state == State::Body && m_framing == Framing::UntilEnd)
        return m_state = State::Done;
    return m_state == State::Done ? m_state : fail("the connection ended early");
}

HttpAnswerReader::State HttpAnswerReader::fail(const char *why)
{
    if (m_error.empty())
        m_error = why;
    return m_state = State::Failed;
}

HttpAnswerReader::State HttpAnswerReader::readHead()
{
    constexpr int FirstFinalStatus = 200;
    while (m_state == State::Head) {
        const std::size_t end = m_pending.find(HeadEnd);
        if (std::min(end, m_pending.size()) > m_limit)
            return fail("the answer's headers are too long");
        if (end == std::string::npos)
            return m_state;
        if (!parseHead(std::string_view(m_pending).substr(0, end)))
            return fail("the answer is not HTTP");
        m_pending.erase(0, end + HeadEnd.size());
        if (m_response->status >= FirstFinalStatus)
            m_state = State::Body;
        else
            m_response.reset(); // one before the answer proper
    }
    return m_state;
}

bool HttpAnswerReader::parseHead(std::string_view head)
{
    constexpr std::size_t StatusAt = 9; // after "HTTP/1.1 "
    constexpr std::size_t StatusSize = 3;
    const auto nextLine = [&head] {
        const std::size_t end = head.find(LineEnd);
        const std::string_view line = head.substr(0, end);
        head.remove_prefix(end == std::string_view::npos ? head.size() : end + LineEnd.size());
        return line;
    };
    const std::string_view first = nextLine();
    if (!first.starts_with("HTTP/1.") || first.size() < StatusAt + StatusSize)
        return false;
    const auto status = number(first.substr(StatusAt, StatusSize), 10);
    if (!status)
        return false;
    HttpResponse response;
    response.status = int(*status);
    while (!head.empty()) {
        const std::string_view line = nextLine();
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            return false;
        response.headers.emplace(lowerCase(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
    const auto coding = response.header("transfer-encoding");
    const auto length = response.header("content-length");
    if (coding) {
        m_framing = Framing::Chunks;
        if (lowerCase(*coding) != "chunked")
            return false;
    } else if (length) {
        m_framing = Framing::Length;
        const auto value = number(*length, 10);
        if (!value)
            return false;
        m_length = *value;
    }
    constexpr int NoContent = 204;
    constexpr int NotModified = 304;
    if (*status == NoContent || *status == NotModified) {
        m_framing = Framing::Length;
        m_length = 0;
    }
    m_response = std::move(response);
    return true;
}

HttpAnswerReader::State HttpAnswerReader::readBody()
{
    if (m_framing == Framing::Chunks)
        return readChunks();
    m_body += m_pending;
    m_pending.clear();
    if (m_framing == Framing::Length && m_length <= m_limit && m_body.size() >= m_length) {
        m_body.resize(m_length);
        return m_state = State::Done;
    }
    if (m_body.size() > m_limit || (m_framing == Framing::Length && m_length > m_limit))
        return fail("the answer is too long");
    return m_state;
}

HttpAnswerReader::State HttpAnswerReader::readChunks()
{
    std::size_t read = 0;
    while (true) {
        const std::string_view rest = std::string_view(m_pending).substr(read);
        const std::size_t end = rest.find(LineEnd);
        if (std::min(end, rest.size()) > LongestChunkLine)
            return fail("the answer is not HTTP");
        if (end == std::string_view::npos)
            break;
        const auto size = number(trimmed(rest.substr(0, std::min(end, rest.find(';')))), 16);
        if (!size)
            return fail("the answer is not HTTP");
        if (*size > m_limit - m_body.size())
            return fail("the answer is too long");
        if (*size == 0)
            return m_state = State::Done; // what may follow is of no use here
        const std::size_t data = end + LineEnd.size();
        if (rest.size() < data + *size + LineEnd.size())
            break;
        m_body += rest.substr(data, *size);
        read += data + *size + LineEnd.size();
    }
    m_pending.erase(0, read);
    return m_state;
}

} // namespace quillbay
