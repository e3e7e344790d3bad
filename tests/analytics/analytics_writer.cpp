// A process that is killed: analytics_writer FOLDER PREFERENCES store COUNT | flush URL
//
// Stores events and prints "stored", or flushes and prints "taken" when the service took a batch, before its
// rows are deleted. Then it waits for its end.

#include "analytics/FlushingClient.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

using namespace quillbay::testing;

namespace {

[[noreturn]] void announce(const char *what)
{
    std::puts(what);
    std::fflush(stdout);
    while (true)
        ::pause();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 5)
        return EXIT_FAILURE;
    const quillbay::MarlpostPersistence::Places places = {QString::fromLocal8Bit(argv[1]),
                                                          QString::fromLocal8Bit(argv[2])};
    const bool isStoring = std::string_view(argv[3]) == "store";
    const auto client =
        FlushingClient::make(places, isStoring ? "http://127.0.0.1:9" : argv[4], false,
                             quillbay::FlushRequest::defaultSurroundings(), [] { announce("taken"); });
    if (isStoring)
        announce(client->store(std::atoi(argv[4])) ? "stored" : "failed");
    client->flush(false, {});
    announce("asked");
}
