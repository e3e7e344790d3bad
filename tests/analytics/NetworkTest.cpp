#include "analytics/Network.h"

#include "analytics/HttpAnswerReader.h"
#include "analytics/HttpService.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>
#include <QTest>

#include <future>

#include <gmock/gmock.h>

namespace quillbay {

namespace {

using testing::HttpService;
using Ending = HttpService::Ending;

constexpr std::chrono::seconds Bound(60);
const HttpFields PlainText = {{"Content-Type", "text/plain"}};

/// The end of one request.
struct Outcome
{
    std::optional<Reason> reason;
    int result = -1;
    std::optional<HttpResponse> response;
};

std::future<Outcome> start(const std::string &base, Resource resource, std::stop_token stop = {})
{
    const auto promise = std::make_shared<std::promise<Outcome>>();
    auto future = promise->get_future();
    if (!resource.parse)
        resource.parse = [](std::string_view body) { return std::optional(int(body.size())); };
    Network().apiRequest(
        base, std::move(resource),
        [promise](const Reason &reason, const auto &response) {
            promise->set_value({reason, -1, response});
        },
        [promise](int result, const HttpResponse &response) {
            promise->set_value({{}, result, response});
        },
        stop);
    return future;
}

Outcome request(const std::string &base, Resource resource)
{
    auto future = start(base, std::move(resource));
    if (future.wait_for(Bound) != std::future_status::ready)
        return {Reason{Reason::Kind::Other, 0, "the test's bound"}, -1, {}};
    return future.get();
}

TEST(NetworkTest, BuildsTheUrl)
{
    const Resource resource = {"/track/",    "post", "body", {{"ip", "1"}, {"a b", "1+1=2&é"}},
                               {{"H", "v"}}, {}};
    const auto built = Network::buildURLRequest("https://example.org/base/", resource);
    ASSERT_TRUE(built);
    EXPECT_EQ(built->url, "https://example.org/base/track/?ip=1&a%20b=1%2B1%3D2%26%C3%A9");
    EXPECT_EQ(built->method, "POST");
    EXPECT_EQ(built->body, "body");
    EXPECT_EQ(built->headers, (HttpFields{{"H", "v"}}));
}

TEST(NetworkTest, PlainHttpStaysOnTheMachine)
{
    for (const char *base :
         {"http://127.0.0.1:1", "http://localhost", "http://[::1]:80", "https://example.org"})
        EXPECT_TRUE(Network::buildURLRequest(base, {})) << base;
    for (const char *base : {"http://example.org", "http://127.0.0.1.example.org", "http://192.0.2.1",
                             "ftp://localhost", "file:///etc/passwd", "example.org", "https://", ""})
        EXPECT_FALSE(Network::buildURLRequest(base, {})) << base;
    const Outcome outcome = request("http://192.0.2.1", {});
    ASSERT_TRUE(outcome.reason);
    EXPECT_EQ(outcome.reason->kind, Reason::Kind::Other);
}

TEST(NetworkTest, AnswersGoThroughTheParser)
{
    const HttpService service(HttpService::Reply{200, "four", "X-Field: a\r\nx-field: b\r\n", Ending::Whole});
    const Outcome got = request(service.url(), {"/x", "get", {}, {}, {}, {}});
    EXPECT_FALSE(got.reason);
    EXPECT_EQ(got.result, 4);
    ASSERT_TRUE(got.response);
    EXPECT_THAT(got.response->header("x-field").value_or("none"), ::testing::StartsWith("a"));
    EXPECT_EQ(service.requests().at(0).method, "GET");
    const Outcome unreadable =
        request(service.url(),
                {"/x", "post", "b", {}, PlainText, [](std::string_view) { return std::optional<int>(); }});
    ASSERT_TRUE(unreadable.reason);
    EXPECT_EQ(unreadable.reason->kind, Reason::Kind::ParseError);
}

TEST(NetworkTest, AnswersComeInEveryFraming)
{
    const std::string chunked =
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\n\r\n3;x=y\r\nabc\r\nA\r\n0123456789"
        "\r\n0\r\nTrailer: t\r\n\r\n";
    const std::pair<std::string, std::string> cases[] = {
        {chunked, "abc0123456789"},
        {"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n1234", "12"},
        {"HTTP/1.0 200 OK\r\n\r\n1234", "1234"},
        {"HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\ncontent-length:0\r\n\r\n", ""},
    };
    for (const auto &[text, body] : cases) {
        HttpAnswerReader atOnce(100);
        HttpAnswerReader bytewise(100);
        atOnce.add(text);
        for (const char &byte : text)
            bytewise.add({&byte, 1});
        for (HttpAnswerReader *reader : {&atOnce, &bytewise}) {
            EXPECT_EQ(reader->end(), HttpAnswerReader::State::Done) << text << reader->error();
            EXPECT_EQ(reader->body(), body);
            EXPECT_EQ(reader->response()->status, 200);
        }
    }
    for (const std::string &text :
         {std::string("HTTP/1.1 200 OK\r\nContent-Length: 101\r\n\r\n"),
          std::string("<html>") + std::string(200, 'x'),
          std::string("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\n"),
          std::string("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n\r\n"),
          "HTTP/1.1 200 OK\r\nA: " + std::string(101, 'x')}) {
        HttpAnswerReader reader(100);
        EXPECT_EQ(reader.add(text), HttpAnswerReader::State::Failed) << text;
    }
    HttpAnswerReader cut(100);
    cut.add(chunked.substr(0, chunked.find("0\r\nTrailer")));
    EXPECT_EQ(cut.end(), HttpAnswerReader::State::Failed);
}

TEST(NetworkTest, LargeBodyArrivesWhole)
{
    const HttpService service;
    std::string body;
    for (int i = 0; body.size() < 3'000'000; ++i)
        body += std::to_string(i) + ' ';
    EXPECT_EQ(request(service.url(), {"/x", "post", body, {}, PlainText, {}}).result, 1);
    EXPECT_EQ(service.requests().at(0).body, body);
}

TEST(NetworkTest, NoRedirectIsFollowed)
{
    const HttpService target;
    for (const int status : {301, 302, 307, 308}) {
        const HttpService service(
            HttpService::Reply{status, "", "Location: " + target.url() + "/stolen\r\n", Ending::Whole});
        const Outcome outcome = request(service.url(), {"/x", "post", "secret", {}, PlainText, {}});
        EXPECT_TRUE(outcome.reason) << status;
    }
    EXPECT_EQ(target.connections(), 0);
}

TEST(NetworkTest, StopEndsARequestAtOnce)
{
    const HttpService service(HttpService::Reply{200, "1", {}, Ending::Silence});
    std::stop_source stop;
    auto future = start(service.url(), {"/x", "post", "b", {}, PlainText, {}}, stop.get_token());
    ASSERT_TRUE(service.waitForRequests(1));
    EXPECT_EQ(Network::runningRequests(), 1);
    stop.request_stop();
    ASSERT_EQ(future.wait_for(Bound), std::future_status::ready);
    const Outcome outcome = future.get();
    ASSERT_TRUE(outcome.reason);
    EXPECT_EQ(outcome.reason->description(), "other(cancelled)");
    EXPECT_EQ(Network::runningRequests(), 0);
}

/// A service with a certificate for "localhost" that nobody has signed.
class SecureService
{
public:
    SecureService()
    {
        const QString key = folder.filePath(QStringLiteral("key.pem"));
        const QString name = folder.filePath(QStringLiteral("certificate.pem"));
        QProcess openssl;
        openssl.start(QStringLiteral("openssl"),
                      {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-nodes"),
                       QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                       QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-subj"),
                       QStringLiteral("/CN=localhost"), QStringLiteral("-addext"),
                       QStringLiteral("subjectAltName=DNS:localhost"), QStringLiteral("-keyout"), key,
                       QStringLiteral("-out"), name});
        EXPECT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0);
        QFile keyFile(key);
        QFile certificateFile(name);
        EXPECT_TRUE(keyFile.open(QFile::ReadOnly) && certificateFile.open(QFile::ReadOnly));
        certificate = QSslCertificate(&certificateFile);
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate);
        configuration.setPrivateKey(QSslKey(&keyFile, QSsl::Ec));
        server.setSslConfiguration(configuration);
        QObject::connect(&server, &QSslServer::startedEncryptionHandshake, &server,
                         [this] { ++connections; });
        QObject::connect(&server, &QTcpServer::pendingConnectionAvailable, &server, [this] {
            QTcpSocket *socket = server.nextPendingConnection();
            QObject::connect(socket, &QIODevice::readyRead, socket, [this, socket] {
                ++requests;
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 1\r\nConnection: close\r\n\r\n1");
                socket->disconnectFromHost();
            });
        });
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    }

    Outcome requestTo(const std::string &host)
    {
        auto future = start("https://" + host + ':' + std::to_string(server.serverPort()),
                            {"/x", "get", {}, {}, {}, {}});
        const bool isReady = QTest::qWaitFor(
            [&] { return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 30'000);
        return isReady ? future.get() : Outcome();
    }

    QTemporaryDir folder;
    QSslServer server;
    QSslCertificate certificate;
    int connections = 0;
    int requests = 0;
};

TEST(NetworkTest, CertificateMustBeKnownAndForTheHost)
{
    SecureService service;
    const Outcome unknown = service.requestTo("localhost");
    ASSERT_TRUE(unknown.reason);
    EXPECT_THAT(unknown.reason->error, ::testing::HasSubstr("certificate"));
    EXPECT_EQ(service.connections, 1);
    EXPECT_EQ(service.requests, 0);

    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = before;
    trusting.addCaCertificate(service.certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    const Outcome otherHost = service.requestTo("127.0.0.1");
    EXPECT_TRUE(otherHost.reason);
    EXPECT_EQ(service.requests, 0);
    const Outcome known = service.requestTo("localhost");
    QSslConfiguration::setDefaultConfiguration(before);
    EXPECT_FALSE(known.reason);
    EXPECT_EQ(known.result, 1);
    EXPECT_EQ(service.connections, 3);
    EXPECT_EQ(service.requests, 1);
}

} // namespace

} // namespace quillbay
