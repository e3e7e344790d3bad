// What a keystroke in the search field costs the main thread: filter_bench [PASSES]
//
// Types words letter by letter over 5,000 applications and deletes them again. A keystroke's time is that of
// QuillbayViewModel::setSearchQuery, which waits for nothing: the filtering, the list's changes, and all that
// hears of them. As beside a screen, one listener asks the list anew for the rows that the first page shows.

#include "app/QuillbayViewModel.h"
#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "platform/none/NoApplications.h"
#include "platform/none/NoBiometrics.h"
#include "platform/none/NoDesktop.h"
#include "workspaces/WorkspaceManager.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

using namespace quillbay;

namespace {

constexpr int applicationCount = 5000;
constexpr int firstPage = 48;
constexpr double limit = 2; ///< Milliseconds.

class MadeApplications final : public platform::ApplicationSource
{
public:
    QStringList folders() const override { return {}; }

    std::vector<platform::InstalledApplication> scan() const override
    {
        const char *const first[] = {"Acorn",   "Basalt", "Cobalt", "Dune", "Estuary", "Fern",
                                     "Glacier", "Heron",  "Île",    "Jade", "Kelp",    "Ölberg"};
        const char *const second[] = {"Draft",  "Frame", "Track", "Volume",  "Port",   "Ledger",
                                      "Puzzle", "Clock", "Atlas", "Archive", "Signal", "Beacon"};
        const char *const third[] = {"Editor", "Viewer", "Player", "Browser", "Game", "Builder", "Monitor"};
        std::vector<platform::InstalledApplication> made(applicationCount);
        for (size_t i = 0; i < made.size(); ++i) {
            made[i].name = QStringLiteral("%1 %2 %3 %4")
                               .arg(QString::fromUtf8(first[i * 7 % std::size(first)]),
                                    QString::fromUtf8(second[i * 5 % std::size(second)]),
                                    QString::fromUtf8(third[i % std::size(third)]))
                               .arg(i);
            made[i].path = QStringLiteral("/applications/app%1.desktop").arg(i);
            made[i].category = QStringLiteral("Utility");
            made[i].sortKey = made[i].name.toCaseFolded().toUtf8();
        }
        return made;
    }

    platform::FileDates dates(const QString &) const override { return {1.6e9, 1.6e9}; }
    std::optional<platform::ApplicationDetails> read(const QString &) const override { return {}; }
};

/// Asks the model for what the first page shows whenever the list has changed.
void readFirstPageOf(const AppListModel &model)
{
    const auto read = [&model] {
        for (int row = 0; row < std::min(firstPage, model.count()); ++row) {
            for (const int role : {int(AppListModel::NameRole), int(AppListModel::PathRole)})
                model.data(model.index(row), role);
        }
    };
    QObject::connect(&model, &AppListModel::rowsInserted, &model, read);
    QObject::connect(&model, &AppListModel::rowsRemoved, &model, read);
    QObject::connect(&model, &AppListModel::dataChanged, &model, read);
}

/// The field's text after each key of typing the words and of deleting each again.
QStringList queries()
{
    QStringList result;
    for (const char *text :
         {"acorn draft editor", "viewer", "öl", "ar", "4711", "builder 12", "xylophone", "e"}) {
        const QString word = QString::fromUtf8(text);
        for (qsizetype length = 1; length <= word.size(); ++length)
            result.append(word.first(length));
        for (qsizetype length = word.size() - 1; length >= 0; --length)
            result.append(word.first(length));
    }
    return result;
}

struct Key
{
    double processor; ///< Milliseconds of the main thread.
    double elapsed;   ///< Milliseconds; on a busy machine those of other programs are among them.
    QString query;
};

double milliseconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void print(const char *title, std::vector<Key> keys, double Key::*part, bool isLimited)
{
    std::sort(keys.begin(), keys.end(), [part](const Key &a, const Key &b) { return a.*part < b.*part; });
    const auto percentile = [&](size_t share) { return keys[(keys.size() - 1) * share / 100].*part; };
    std::printf("%-15s median %.3f ms, 99th percentile %.3f ms", title, percentile(50), percentile(99));
    if (isLimited)
        std::printf(" (limit %.1f)", limit);
    std::printf(", longest %.3f ms (to \"%s\")\n", keys.back().*part, qUtf8Printable(keys.back().query));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int passes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
    const MadeApplications source;
    platform::NoFolderWatch watch;
    platform::NoApplicationLauncher launcher;
    platform::NoBiometrics biometrics;
    platform::NoRecentDocuments documents;
    const platform::NoIconSource icons;
    const QTemporaryDir folder;
    const PreferenceStore preferences(folder.filePath(QStringLiteral("preferences.sqlite")));
    NotificationCenter notifications;
    WorkspaceManager workspaces(preferences, notifications);
    AppFinder finder({source, watch, documents, icons, preferences, workspaces, notifications});
    QEventLoop loop;
    QObject::connect(&finder, &AppFinder::scanFinished, &loop, &QEventLoop::quit);
    QuillbayViewModel viewModel(finder, launcher, biometrics, preferences);
    loop.exec();
    if (viewModel.filteredApps()->count() != applicationCount) {
        std::fprintf(stderr, "the library has %d applications\n", viewModel.filteredApps()->count());
        return EXIT_FAILURE;
    }
    readFirstPageOf(*viewModel.filteredApps());

    std::vector<Key> keys;
    for (int pass = 0; pass < passes; ++pass) {
        for (const QString &query : queries()) {
            const double processor = milliseconds(CLOCK_THREAD_CPUTIME_ID);
            const double start = milliseconds(CLOCK_MONOTONIC);
            viewModel.setSearchQuery(query);
            const double end = milliseconds(CLOCK_MONOTONIC);
            keys.push_back({milliseconds(CLOCK_THREAD_CPUTIME_ID) - processor, end - start, query});
        }
    }
    std::printf("%zu keystrokes over %d applications\n", keys.size(), applicationCount);
    print("processor time", keys, &Key::processor, true);
    print("elapsed", keys, &Key::elapsed, false);
    return EXIT_SUCCESS;
}
