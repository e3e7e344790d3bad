#include "analytics/HttpExchange.h"

#include <QBuffer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <cstring>

namespace quillbay {

namespace {

constexpr qint64 ReadBufferSize = qint64(64) * 1024;
constexpr int MaximumRedirects = 5;

/// The body as a stream that cannot be rewound, so that Qt cannot send it twice.
class OneWayBody final : public QIODevice
{
public:
    explicit OneWayBody(const std::string &body)
        : m_body(body)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return qint64(m_body.size() - m_read); }
    bool atEnd() const override { return m_read == m_body.size(); }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const qint64 size = std::min(maximum, bytesAvailable());
        if (size <= 0)
            return m_read == m_body.size() ? -1 : 0;
        std::memcpy(data, m_body.data() + m_read, std::size_t(size));
        m_read += std::size_t(size);
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const std::string &m_body;
    std::size_t m_read = 0;
};

QNetworkRequest networkRequest(const UrlRequest &request)
{
    QNetworkRequest result(QUrl::fromEncoded(QByteArray::fromStdString(request.url), QUrl::StrictMode));
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                        QNetworkRequest::UserVerifiedRedirectPolicy);
    result.setMaximumRedirectsAllowed(MaximumRedirects);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    result.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    result.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quillbay"));
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    if (request.body)
        result.setHeader(QNetworkRequest::ContentLengthHeader, qint64(request.body->size()));
    return result;
}

HttpResponse responseOf(const QNetworkReply &reply)
{
    HttpResponse response;
    response.status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    for (const QByteArray &name : reply.rawHeaderList())
        response.headers.emplace(name.toLower().toStdString(), reply.rawHeader(name).toStdString());
    return response;
}

/// Whether the reply ended because of what its status says, not for want of an answer.
bool isAnswered(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::NoError ||
           (error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ContentReSendError);
}

} // namespace

HttpAnswer exchangeHttp(const UrlRequest &request, std::size_t answerLimit, const std::stop_token &stop)
{
    HttpAnswer answer;
    QEventLoop loop;
    QNetworkAccessManager manager;
    const std::string noBody;
    OneWayBody body(request.body ? *request.body : noBody);
    const QNetworkRequest prepared = networkRequest(request);
    const std::unique_ptr<QNetworkReply> reply(request.method == "GET" ? manager.get(prepared)
                                                                       : manager.post(prepared, &body));
    reply->setReadBufferSize(ReadBufferSize);
    const auto fail = [&](const char *why) {
        if (answer.error.empty())
            answer.error = why;
        reply->abort();
    };
    QObject::connect(reply.get(), &QNetworkReply::redirected, reply.get(), [&](const QUrl &target) {
        if (target.scheme() == QLatin1String("https"))
            Q_EMIT reply->redirectAllowed();
        else
            fail("redirected to an insecure address");
    });
    QObject::connect(reply.get(), &QIODevice::readyRead, reply.get(), [&] {
        const QByteArray bytes = reply->readAll();
        answer.body.append(bytes.constData(), std::size_t(bytes.size()));
        if (answer.body.size() > answerLimit)
            fail("the answer is too long");
    });
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    {
        const std::stop_callback onStop(stop, [&] {
            QMetaObject::invokeMethod(
                reply.get(), [&] { fail("cancelled"); }, Qt::QueuedConnection);
        });
        if (!reply->isFinished())
            loop.exec();
    }
    if (!isAnswered(reply->error()) && answer.error.empty())
        answer.error = reply->errorString().toStdString();
    if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid() &&
        answer.error != "redirected to an insecure address")
        answer.response = responseOf(*reply);
    const QByteArray rest = reply->isOpen() ? reply->readAll() : QByteArray();
    answer.body.append(rest.constData(), std::size_t(rest.size()));
    if (!answer.error.empty())
        answer.body.clear();
    return answer;
}

} // namespace quillbay
