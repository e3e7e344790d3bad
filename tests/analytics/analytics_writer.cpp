// A process whose end a test watches: analytics_writer FOLDER PREFERENCES track COUNT | flush URL | quit URL
//
// Tracks events and prints "stored" when the tracking queue has run; or flushes, and prints the client's log.
// Then it waits to be killed; with "quit" for a line, and ends as the program does.

#include "analytics/FlushingClient.h"
#include "analytics/Marlpost.h"
#include "support/FakeDeviceIdentity.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

using namespace quillbay;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 5)
        return EXIT_FAILURE;
    const std::string_view what = argv[3];
    MarlpostOptions options;
    options.token = testing::FlushingClient::Name;
    options.flushInterval = 0;
    options.proxyServerConfig = ProxyServerConfig{what == "track" ? "http://127.0.0.1:9" : argv[4], {}};
    MarlpostSurroundings surroundings;
    surroundings.device = std::make_shared<testing::FakeDeviceIdentity>();
    surroundings.places = {QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2])};
    const auto client = Marlpost::initialize(options, surroundings);
    if (what == "track") {
        for (int i = 0; i < std::atoi(argv[4]); ++i)
            client->track("event");
        std::puts(client->trackingQueue().waitUntilDone(std::chrono::minutes(1)) ? "stored" : "failed");
        std::fflush(stdout);
    } else {
        client->setLoggingEnabled(true);
        client->flush();
    }
    if (what == "quit") {
        std::getchar();
        if (!Marlpost::isIdle())
            std::_Exit(EXIT_SUCCESS);
        return EXIT_FAILURE;
    }
    while (true)
        ::pause();
}
