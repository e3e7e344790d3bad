// What a scan costs beyond reading the files: scan_bench [PASSES]
//
// Makes corpora of entries and bundles in a temporary folder and scans each, alternating with a plain loop on
// one core that opens, reads and closes the same files. Prints the medians, their ratios and the limits that
// the ratios are meant to keep. A scan's time ends when its result is sorted and every application has its
// category.

#include "foundation/CollationKey.h"
#include "platform/linux/applications/LinuxApplicationSource.h"
#include "read_floor.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>
#include <vector>

using quillbay::CollationKey;
using quillbay::platform::ApplicationEnvironment;
using quillbay::platform::InstalledApplication;
using quillbay::platform::LinuxApplicationSource;

namespace {

struct Corpus
{
    const char *title;
    QStringList options; ///< Of make_corpus.py.
    double cpuLimit;
    double wallLimit; ///< 0: none is promised.
};

struct Cost
{
    double cpu = 0; ///< Milliseconds, of all threads.
    double wall = 0;
};

double milliseconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

template <typename Work>
Cost measure(const Work &work)
{
    const double cpu = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    const double wall = milliseconds(CLOCK_MONOTONIC);
    work();
    return {milliseconds(CLOCK_PROCESS_CPUTIME_ID) - cpu, milliseconds(CLOCK_MONOTONIC) - wall};
}

Cost medianOf(const std::vector<Cost> &costs)
{
    const auto median = [&](double Cost::*part) {
        std::vector<double> values;
        for (const Cost &cost : costs)
            values.push_back(cost.*part);
        std::nth_element(values.begin(), values.begin() + long(values.size() / 2), values.end());
        return values[values.size() / 2];
    };
    return {median(&Cost::cpu), median(&Cost::wall)};
}

/// As the library does it: stable by sort key, then the last part of the type a bundle declares, capitalised.
std::vector<InstalledApplication> sortedAndCategorised(std::vector<InstalledApplication> &&found)
{
    std::vector<QByteArrayView> keys;
    for (const InstalledApplication &application : found)
        keys.emplace_back(application.sortKey);
    std::vector<InstalledApplication> result;
    result.reserve(found.size());
    for (const size_t index : CollationKey::sortedOrder(keys)) {
        InstalledApplication &application = result.emplace_back(std::move(found[index]));
        if (!application.category.isNull())
            continue;
        const qsizetype dot = application.categoryType.lastIndexOf(u'.');
        application.category = application.categoryType.isNull()
                                   ? QStringLiteral("Other")
                                   : application.categoryType.mid(dot + 1).toLower();
        if (!application.category.isEmpty())
            application.category[0] = application.category[0].toUpper();
    }
    return result;
}

void run(const Corpus &corpus, const QString &folder, size_t passes)
{
    const bool bundles = corpus.options.first() == QStringLiteral("bundles");
    ApplicationEnvironment environment;
    environment.home = folder + QStringLiteral("/home");
    environment.dataHome = folder;
    if (bundles)
        environment.systemBundleDirs = {folder};
    environment.locales = {"de_DE", "de"};
    const LinuxApplicationSource source(environment);

    const QString listed = bundles ? folder : folder + QStringLiteral("/applications");
    const size_t count = QDir(listed).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();

    std::vector<Cost> floors;
    std::vector<Cost> scans;
    for (size_t pass = 0; pass < passes + 1; ++pass) {
        long bytes = 0;
        const Cost floor = measure(
            [&] { bytes = read_floor(QFile::encodeName(listed), bundles ? "/Contents/Info.plist" : ""); });
        std::vector<InstalledApplication> found;
        const Cost scan = measure([&] { found = sortedAndCategorised(source.scan()); });
        if (bytes < 0 || found.size() != count) {
            std::fprintf(stderr, "%s: found %zu of %zu applications\n", corpus.title, found.size(), count);
            std::exit(EXIT_FAILURE);
        }
        if (pass == 0) // warms the caches
            continue;
        floors.push_back(floor);
        scans.push_back(scan);
    }
    const Cost floor = medianOf(floors);
    const Cost scan = medianOf(scans);
    std::printf("%-22s floor cpu %6.2f ms | scan cpu %6.2f ms, wall %6.2f ms | cpu ratio %.2f (limit %.1f)",
                corpus.title, floor.cpu, scan.cpu, scan.wall, scan.cpu / floor.cpu, corpus.cpuLimit);
    std::printf(corpus.wallLimit > 0 ? " | wall ratio %.2f (limit %.1f on two cores)\n"
                                     : " | wall ratio %.2f\n",
                scan.wall / floor.wall, corpus.wallLimit);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const size_t passes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 31;
    const QTemporaryDir folder;
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const Corpus corpora[] = {
        {"1000 entries", {QStringLiteral("entries"), QStringLiteral("-n1000")}, 2.5, 1.3},
        {"5000 entries", {QStringLiteral("entries"), QStringLiteral("-n5000")}, 2.5, 1.3},
        {"1000 bundles, XML", {QStringLiteral("bundles"), QStringLiteral("-n1000")}, 6, 0},
        {"1000 bundles, binary",
         {QStringLiteral("bundles"), QStringLiteral("-n1000"), QStringLiteral("--binary")},
         6,
         0},
    };
    for (const Corpus &corpus : corpora) {
        const QString place = folder.filePath(QString::fromLatin1(corpus.title));
        const QStringList script{QStringLiteral(QUILLBAY_BENCH_SOURCE "/make_corpus.py")};
        if (QProcess::execute(python, script + corpus.options + QStringList(place)) != 0) {
            std::fprintf(stderr, "make_corpus.py failed\n");
            return EXIT_FAILURE;
        }
        run(corpus, place, passes);
    }
    return EXIT_SUCCESS;
}
