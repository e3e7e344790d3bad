#include "analytics/HttpExchange.h"

#include "analytics/HttpAnswerReader.h"

#include <QEventLoop>
#include <QSslSocket>
#include <QUrl>

#include <array>

namespace quillbay {

namespace {

constexpr int HttpsPort = 443;
constexpr int HttpPort = 80;
constexpr qint64 BufferSize = qint64(64) * 1024;

/// A line break in a name or value would begin a header of somebody's choice.
bool isOneLine(const std::string &text)
{
    return text.find_first_of("\r\n") == std::string::npos;
}

std::string headOf(const UrlRequest &request, const QUrl &url)
{
    const QByteArray target =
        url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    const QByteArray host = url.toEncoded(QUrl::RemoveScheme | QUrl::RemovePath | QUrl::RemoveQuery |
                                          QUrl::RemoveFragment | QUrl::RemoveUserInfo);
    std::string head = request.method + ' ' + target.toStdString() + " HTTP/1.1\r\nHost: ";
    head += host.mid(2).toStdString(); // without its "//"
    head += "\r\nConnection: close\r\nUser-Agent: Quillbay\r\nAccept: */*\r\n";
    for (const auto &[name, value] : request.headers) {
        if (isOneLine(name) && isOneLine(value))
            head.append(name).append(": ").append(value).append("\r\n");
    }
    if (request.body)
        head += "Content-Length: " + std::to_string(request.body->size()) + "\r\n";
    return head + "\r\n";
}

/// One request on one socket, in the thread's event loop.
class Exchange
{
public:
    Exchange(const UrlRequest &request, std::size_t limit)
        : m_request(request)
        , m_url(QUrl::fromEncoded(QByteArray::fromStdString(request.url), QUrl::StrictMode))
        , m_reader(limit)
    {
        m_socket.setReadBufferSize(BufferSize);
        QObject::connect(&m_socket, &QIODevice::readyRead, &m_loop, [this] { read(); });
        QObject::connect(&m_socket, &QAbstractSocket::errorOccurred, &m_loop, [this] { ended(); });
        QObject::connect(&m_socket, &QAbstractSocket::disconnected, &m_loop, [this] { ended(); });
    }

    HttpAnswer run(const std::stop_token &stop)
    {
        const bool isSecure = m_url.scheme() == QLatin1String("https");
        const auto send = [this] { write(); };
        if (isSecure) {
            QObject::connect(&m_socket, &QSslSocket::encrypted, &m_loop, send);
            m_socket.connectToHostEncrypted(m_url.host(), quint16(m_url.port(HttpsPort)));
        } else {
            QObject::connect(&m_socket, &QAbstractSocket::connected, &m_loop, send);
            m_socket.connectToHost(m_url.host(), quint16(m_url.port(HttpPort)));
        }
        const std::stop_callback onStop(stop, [this] {
            QMetaObject::invokeMethod(
                &m_loop, [this] { finish("cancelled"); }, Qt::QueuedConnection);
        });
        if (!m_isFinished)
            m_loop.exec();
        m_socket.abort();
        return std::move(m_answer);
    }

private:
    void write()
    {
        const std::string head = headOf(m_request, m_url);
        m_socket.write(head.data(), qint64(head.size()));
        if (m_request.body)
            m_socket.write(m_request.body->data(), qint64(m_request.body->size()));
    }

    /// Whether there was something.
    bool read()
    {
        std::array<char, BufferSize> buffer;
        const qint64 size = m_socket.read(buffer.data(), BufferSize);
        if (size > 0)
            m_reader.add({buffer.data(), std::size_t(size)});
        if (m_reader.state() == HttpAnswerReader::State::Done)
            finish({});
        else if (m_reader.state() == HttpAnswerReader::State::Failed)
            finish(m_reader.error());
        return size > 0;
    }

    void ended()
    {
        while (!m_isFinished && read()) {
        }
        if (m_isFinished)
            return;
        // The end may be how the answer ends.
        const auto error = m_socket.error();
        const bool isPlainEnd =
            error == QAbstractSocket::RemoteHostClosedError || error == QAbstractSocket::UnknownSocketError;
        if (!isPlainEnd)
            finish(m_socket.errorString().toStdString());
        else if (m_reader.end() == HttpAnswerReader::State::Done)
            finish({});
        else
            finish(m_reader.error());
    }

    void finish(const std::string &error)
    {
        if (m_isFinished)
            return;
        m_isFinished = true;
        m_answer.response = m_reader.response();
        m_answer.error = error;
        if (error.empty())
            m_answer.body = m_reader.body();
        m_loop.quit();
    }

    const UrlRequest &m_request;
    const QUrl m_url;
    HttpAnswerReader m_reader;
    HttpAnswer m_answer;
    bool m_isFinished = false;
    QEventLoop m_loop;
    QSslSocket m_socket;
};

} // namespace

HttpAnswer exchangeHttp(const UrlRequest &request, std::size_t answerLimit, const std::stop_token &stop)
{
    return Exchange(request, answerLimit).run(stop);
}

} // namespace quillbay
