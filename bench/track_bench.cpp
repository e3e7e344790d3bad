// What recording an event costs: track_bench [ROUNDS]
//
// Processor time, of all threads, of 10,000 events tracked until they are stored, against the floor in turns:
// the same JSON texts made by a JSON library from ready objects and inserted one by one through plain SQLite
// into the same table, with the same journal and synchronous mode. And how long `track` keeps its caller: in
// such a burst, and when the queue rests before each call, so that its thread must be woken.

#include "analytics/MarlpostInstance.h"
#include "platform/none/NoDeviceIdentity.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>
#include <sqlite3.h>

using namespace quillbay;

namespace {

constexpr int eventCount = 10'000;
constexpr int pacedCount = 1'000;
constexpr char table[] = "marlpost_bench_events";

double seconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "track_bench: %s\n", what);
    std::exit(EXIT_FAILURE);
}

struct Client
{
    explicit Client(const QString &folder)
        : databaseFile((folder + QStringLiteral("/bench_MPDB.sqlite")).toStdString())
    {
        MarlpostOptions options;
        options.token = "bench";
        // Somewhere to send to, lest the store keep to its limit; nothing is sent.
        options.proxyServerConfig = ProxyServerConfig{"http://127.0.0.1:1", {}};
        MarlpostSurroundings around;
        around.device = std::make_shared<platform::NoDeviceIdentity>();
        around.flush.clock = [clock = around.flush.clock, inUse = inUse] { return clock(); };
        around.places = {folder, folder + QStringLiteral("/preferences.sqlite")};
        instance = MarlpostInstance::create(options, around);
        instance->identify("somebody");
        settle();
    }
    ~Client()
    {
        // The store holds the clock until it is closed, and its folder can go.
        instance.reset();
        while (inUse.use_count() > 1)
            std::this_thread::yield();
    }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    void settle() const
    {
        if (!instance->trackingQueue().waitUntilDone(std::chrono::minutes(10)))
            fail("the events are not stored");
    }
    double track()
    {
        const double before = seconds(CLOCK_MONOTONIC);
        instance->track("App Launched",
                        {{"app_name", "Text Editor"}, {"platform", "mac"}, {"app_version", "0.1.0"}});
        return (seconds(CLOCK_MONOTONIC) - before) * 1e6;
    }

    const std::shared_ptr<int> inUse = std::make_shared<int>();
    std::shared_ptr<MarlpostInstance> instance;
    const std::string databaseFile;
};

void run(sqlite3 *database, const std::string &sql)
{
    if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(sqlite3_errmsg(database));
}

std::vector<nlohmann::ordered_json> storedObjects(const std::string &file)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(
            database, (std::string("SELECT data FROM ") + table + " ORDER BY id DESC LIMIT 10000").c_str(),
            -1, &statement, nullptr) != SQLITE_OK)
        fail(sqlite3_errmsg(database));
    std::vector<nlohmann::ordered_json> objects;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const char *text = static_cast<const char *>(sqlite3_column_blob(statement, 0));
        objects.push_back(nlohmann::ordered_json::parse(text, text + sqlite3_column_bytes(statement, 0)));
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    if (objects.size() != eventCount)
        fail("not every event is stored");
    return objects;
}

double floorTime(const std::string &file, const std::vector<nlohmann::ordered_json> &objects)
{
    sqlite3 *database = nullptr;
    if (sqlite3_open(file.c_str(), &database) != SQLITE_OK)
        fail(sqlite3_errmsg(database));
    run(database, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL");
    run(database, std::string("CREATE TABLE ") + table +
                      "(id integer primary key autoincrement,data blob,time real,flag integer)");
    run(database, std::string("CREATE INDEX idx ON ") + table + " (time)");
    sqlite3_stmt *statement = nullptr;
    const std::string sql = std::string("INSERT INTO ") + table + " (data, flag, time) VALUES(?, ?, ?)";
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        fail(sqlite3_errmsg(database));
    const double before = seconds(CLOCK_PROCESS_CPUTIME_ID);
    for (const nlohmann::ordered_json &object : objects) {
        const std::string text = object.dump();
        sqlite3_bind_blob(statement, 1, text.data(), int(text.size()), SQLITE_STATIC);
        sqlite3_bind_int(statement, 2, 0);
        sqlite3_bind_double(statement, 3, seconds(CLOCK_REALTIME));
        if (sqlite3_step(statement) != SQLITE_DONE || sqlite3_reset(statement) != SQLITE_OK)
            fail(sqlite3_errmsg(database));
    }
    const double time = seconds(CLOCK_PROCESS_CPUTIME_ID) - before;
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return time;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    std::vector<double> ratios;
    std::vector<double> floors;
    std::vector<double> tracked;
    std::vector<double> burst;
    std::vector<double> paced;
    for (int round = 0; round < rounds; ++round) {
        const QTemporaryDir folder;
        Client client(folder.path());
        const double before = seconds(CLOCK_PROCESS_CPUTIME_ID);
        for (int i = 0; i < eventCount; ++i)
            burst.push_back(client.track());
        client.settle();
        tracked.push_back(seconds(CLOCK_PROCESS_CPUTIME_ID) - before);
        floors.push_back(floorTime(folder.filePath(QStringLiteral("floor.sqlite")).toStdString(),
                                   storedObjects(client.databaseFile)));
        ratios.push_back(tracked.back() / floors.back());
        for (int i = 0; i < pacedCount; ++i) {
            paced.push_back(client.track());
            client.settle();
        }
    }
    std::printf("10,000 events, processor time: floor %.1f ms, tracked %.1f ms, ratio %.2f (limit 2)\n",
                median(floors) * 1e3, median(tracked) * 1e3, median(ratios));
    std::printf("track returns after, median: %.1f us in a burst, %.1f us at rest (limit 20)\n",
                median(burst), median(paced));
    return 0;
}
