// What sending recorded events costs in memory: analytics_bench [BODY]
//
// 10,000 events of a usual size, with texts of BODY bytes, are stored. In one process 200 ordinary flushes of
// fifty drain them to a service on the loopback that takes everything; in another one full flush does. Each
// prints by how much the resident memory grew at most, in bytes and in the rows' own bytes, and how the time
// relates to reading and deleting the same rows through plain SQLite.

#include "analytics/HttpService.h"
#include "analytics/MarlpostInstance.h"
#include "platform/none/NoDeviceIdentity.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

#include <malloc.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillbay;
using testing::HttpService;

namespace {

constexpr int eventCount = 10'000;
constexpr int batch = 50;
constexpr char token[] = "bench";
constexpr double megabyte = 1e6;

double now()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "analytics_bench: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// Bytes of a line of /proc/self/status.
double statusBytes(const QByteArray &name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QFile::ReadOnly))
        fail("/proc/self/status");
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed().split(' ').first().toDouble() * 1024;
    }
    fail("no such line in /proc/self/status");
}

/// Forgets the highest resident memory so far; `peak` is then that since this call.
void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (!file.open(QFile::WriteOnly) || file.write("5") != 1)
        fail("/proc/self/clear_refs");
}

double peak()
{
    return statusBytes("VmHWM");
}

MarlpostPersistence::Places placesIn(const QString &folder)
{
    return {folder, folder + QStringLiteral("/preferences.sqlite")};
}

void store(const QString &folder, std::size_t body)
{
    MarlpostPersistence persistence(token, placesIn(folder), {[] { return 1.0; }, false});
    std::vector<MarlpostDictionary> events;
    for (int i = 0; i < eventCount; ++i) {
        MarlpostDictionary properties = {{"token", "7c1e9a40d2b86f35e0a4c71b93de6f08"},
                                         {"time", 1'700'000'000'000 + i},
                                         {"distinct_id", "8E2C0A8B-6E0B-4B0D-8A53-0A3A4F2D7C11"},
                                         {"$screen_width", 2560},
                                         {"$screen_height", 1440},
                                         {"text", std::string(body, 'x')}};
        for (int extra = 0; extra < 10; ++extra)
            properties.append("property " + std::to_string(extra), i * extra);
        events.push_back({{"event", "App Launched"}, {"properties", std::move(properties)}});
    }
    if (!persistence.saveEntities(events, PersistenceType::Events))
        fail("cannot store the events");
}

/// Reads the rows in batches and deletes them, as plainly as can be; milliseconds. Answers their bytes.
double plainDrain(const QString &file, int rowsAtOnce, double &bytes)
{
    const QByteArray table = QByteArrayLiteral("marlpost_") + token + "_events";
    const double start = now();
    sqlite3 *database = nullptr;
    sqlite3_stmt *read = nullptr;
    if (sqlite3_open(QFile::encodeName(file).constData(), &database) != SQLITE_OK ||
        sqlite3_exec(database, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(
            database, ("SELECT id, data FROM " + table + " WHERE flag = 0 ORDER BY time LIMIT ?").constData(),
            -1, &read, nullptr) != SQLITE_OK)
        fail("plain SQLite");
    while (true) {
        QByteArray ids;
        sqlite3_bind_int(read, 1, rowsAtOnce);
        while (sqlite3_step(read) == SQLITE_ROW) {
            ids += (ids.isEmpty() ? '(' : ',') + QByteArray::number(sqlite3_column_int(read, 0));
            bytes += sqlite3_column_bytes(read, 1);
        }
        sqlite3_reset(read);
        if (ids.isEmpty())
            break;
        const QByteArray sql = "DELETE FROM " + table + " WHERE id IN " + ids + ')';
        if (sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            fail("plain SQLite");
    }
    sqlite3_finalize(read);
    sqlite3_close(database);
    return now() - start;
}

std::shared_ptr<MarlpostInstance> start(const QString &folder, const std::string &url)
{
    MarlpostOptions options;
    options.token = token;
    options.flushInterval = 0;
    options.proxyServerConfig = ProxyServerConfig{url, {}};
    MarlpostSurroundings around;
    around.device = std::make_shared<platform::NoDeviceIdentity>();
    around.places = placesIn(folder);
    return MarlpostInstance::create(options, around);
}

void flush(MarlpostInstance &client, bool performFullFlush)
{
    bool isDone = false;
    client.flush(performFullFlush, [&isDone] { isDone = true; });
    while (!isDone)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void drain(const QString &folder, const std::string &url, bool performFullFlush, double rowBytes,
           double plain)
{
    const auto client = start(folder, url);
    // What the first connection and the first statement need stays out of it.
    client->track("App Launched");
    if (!client->trackingQueue().waitUntilDone(std::chrono::minutes(1)))
        fail("the first event");
    client->flushSettings().flushQueueInBatches({{0, "{}"}}, PersistenceType::Events);
    malloc_trim(0);
    forgetPeak();
    const double before = statusBytes("VmRSS");
    const double start = now();
    for (int i = 0; i < (performFullFlush ? 1 : eventCount / batch); ++i)
        flush(*client, performFullFlush);
    const double elapsed = now() - start;
    const double grown = peak() - before;
    flush(*client, true);
    if (!client->trackingQueue().waitUntilDone(std::chrono::minutes(1)) ||
        MPDB(token, folder, [] { return 0.0; }).rowCount(PersistenceType::Events) != 0)
        fail("rows are left");
    if (performFullFlush)
        std::printf(
            "one full flush of %d rows, %.1f MB: at most %.1f MB more, ratio %.2f   (limit 3.0); %.0f ms, "
            "plain SQLite %.0f ms\n",
            eventCount, rowBytes / megabyte, grown / megabyte, grown / rowBytes, elapsed, plain);
    else
        std::printf(
            "%d flushes of %d rows, %.1f MB in all: at most %.2f MB more   (limit 10); %.0f ms, plain SQLite "
            "%.0f ms\n",
            eventCount / batch, batch, rowBytes / megabyte, grown / megabyte, elapsed, plain);
    std::fflush(stdout);
}

/// In a process of its own, so that neither sees the other's memory, nor that of the service.
void inChild(const std::function<void()> &body)
{
    const pid_t child = ::fork();
    int status = 0;
    if (child == 0) {
        body();
        std::_Exit(EXIT_SUCCESS);
    }
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0)
        fail("a child");
}

} // namespace

int main(int argc, char **argv)
{
    const std::size_t body = argc > 1 ? std::size_t(std::max(0, std::atoi(argv[1]))) : 200;
    int port[2];
    if (::pipe(port) != 0)
        fail("a pipe");
    const pid_t server = ::fork();
    if (server == 0) {
        const HttpService service;
        const std::string url = service.url();
        if (::write(port[1], url.c_str(), url.size() + 1) < 0)
            std::_Exit(EXIT_FAILURE);
        ::pause();
    }
    char url[64] = {};
    if (server < 0 || ::read(port[0], url, sizeof url - 1) <= 0)
        fail("the service");
    for (const bool performFullFlush : {false, true}) {
        inChild([&] {
            QCoreApplication application(argc, argv);
            const QTemporaryDir plainFolder;
            const QTemporaryDir folder;
            double rowBytes = 0;
            double plain = 0;
            inChild([&] { store(plainFolder.path(), body); });
            inChild([&] { store(folder.path(), body); });
            plain = plainDrain(MPDB(token, plainFolder.path(), {}).path(),
                               performFullFlush ? eventCount : batch, rowBytes);
            drain(folder.path(), url, performFullFlush, rowBytes, plain);
        });
    }
    ::kill(server, SIGKILL);
    ::waitpid(server, nullptr, 0);
    return EXIT_SUCCESS;
}
