// What finding an application's files costs: uninstall_bench [ROUNDS]
//
// The size of a tree of 200,000 files against `du -s --apparent-size` on the same warm tree, in turns. Then
// whole scans of a made home of as many files, with 3,000 entries in each folder that a step looks into, and
// what they do to the main thread: how long a call posted to it at any time during the scan waits, and the
// longest time that it spends on one event.

#include "bench/MadeHome.h"
#include "uninstaller/AppUninstallerScanner.h"
#include "uninstaller/DirectorySize.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillbay;

namespace {

constexpr double frame = 1000.0 / 60; ///< Milliseconds.

double timeOfDu(const QByteArray &path)
{
    const char *const arguments[] = {"du", "-s", "--apparent-size", path.constData(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    const double start = now();
    if (posix_spawnp(&child, "du", &actions, nullptr, const_cast<char *const *>(arguments), environ) != 0 ||
        ::waitpid(child, &status, 0) != child || status != 0)
        fail("du");
    posix_spawn_file_actions_destroy(&actions);
    return now() - start;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measureSize(const QByteArray &folder, int rounds)
{
    makeTree(folder, madeFileCount);
    std::vector<double> own;
    std::vector<double> du;
    qint64 size = 0;
    for (int round = 0; round <= rounds; ++round) {
        const double duTime = timeOfDu(folder);
        const double start = now();
        size = directorySize(folder);
        if (round == 0)
            continue; // it warms the tree
        own.push_back(now() - start);
        du.push_back(duTime);
    }
    std::printf("directorySize, %d files of %lld bytes: %.1f ms, du %.1f ms, ratio %.2f   (limit 1.0)\n",
                madeFileCount, static_cast<long long>(size), median(own), median(du),
                median(own) / median(du));
}

/// Times every event that the main thread handles.
class TimedApplication final : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    double longest = 0; ///< Milliseconds.

    bool notify(QObject *receiver, QEvent *event) override
    {
        const double start = now();
        const bool result = QCoreApplication::notify(receiver, event);
        longest = std::max(longest, now() - start);
        return result;
    }
};

void measureScan(TimedApplication &application, const platform::ResidualLayout &layout, const QString &name)
{
    AppUninstallerScanner scanner({std::make_shared<MadeRoots>(layout)});
    AppItem app;
    app.name = name;
    app.path = QFile::decodeName(layout.home + "/none.desktop");
    QEventLoop loop;
    QObject::connect(&scanner, &AppUninstallerScanner::isScanningChanged, &loop, [&] {
        if (!scanner.isScanning())
            loop.quit();
    });

    std::atomic_bool ended = false;
    double longestWait = 0; // written on the main thread alone
    std::thread probe([&] {
        while (!ended) {
            QMetaObject::invokeMethod(
                &application, [&, posted = now()] { longestWait = std::max(longestWait, now() - posted); },
                Qt::QueuedConnection);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    application.longest = 0;
    const double start = now();
    scanner.scan(app);
    const double called = now() - start;
    loop.exec();
    const double elapsed = now() - start;
    ended = true;
    probe.join();
    QCoreApplication::processEvents();
    std::printf(
        "scan for \"%s\": %lld rows, %s, in %.0f ms; the call %.2f ms; a posted call waits at most %.2f ms "
        "(limit %.1f), longest event %.2f ms (limit 8)\n",
        qPrintable(name), static_cast<long long>(scanner.residualFiles().size()),
        qPrintable(scanner.formattedTotalSize()), elapsed, called, longestWait, frame, application.longest);
    const double again = now();
    scanner.scan(app);
    std::printf("    the call that drops these rows: %.2f ms (limit 8)\n", now() - again);
}

} // namespace

int main(int argc, char **argv)
{
    TimedApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 15;
    const QTemporaryDir folder;
    if (!folder.isValid())
        fail("a temporary folder");
    const QByteArray root = QFile::encodeName(folder.path());
    measureSize(root + "/tree", rounds);
    const platform::ResidualLayout layout = makeHome(root + "/root");
    // The first warms the home; a tenth of the entries match, then all of them.
    for (const char *name : {"Acme", "Acme", "org"})
        measureScan(application, layout, QString::fromLatin1(name));
    return EXIT_SUCCESS;
}
