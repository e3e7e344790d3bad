// What a keystroke in the search field costs the main thread: filter_bench [PASSES]
//
// Types words letter by letter over 5,000 applications and deletes them again. A keystroke's time is that of
// QuillbayViewModel::setSearchQuery: the filtering, the list's changes, and all that hears of them. As beside
// a screen, one listener asks the list anew for the rows that the first page shows.

#include "app/QuillbayViewModel.h"
#include "platform/none/NoApplications.h"
#include "platform/none/NoDesktop.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
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

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int passes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
    const MadeApplications source;
    platform::NoFolderWatch watch;
    platform::NoApplicationLauncher launcher;
    AppFinder finder(source, watch);
    QEventLoop loop;
    QObject::connect(&finder, &AppFinder::scanFinished, &loop, &QEventLoop::quit);
    QuillbayViewModel viewModel(finder, launcher);
    loop.exec();
    if (viewModel.filteredApps()->count() != applicationCount) {
        std::fprintf(stderr, "the library has %d applications\n", viewModel.filteredApps()->count());
        return EXIT_FAILURE;
    }
    readFirstPageOf(*viewModel.filteredApps());

    using Milliseconds = std::chrono::duration<double, std::milli>;
    struct Key
    {
        double time;
        QString query;
    };
    std::vector<Key> keys;
    for (int pass = 0; pass < passes; ++pass) {
        for (const QString &query : queries()) {
            const auto start = std::chrono::steady_clock::now();
            viewModel.setSearchQuery(query);
            keys.push_back({Milliseconds(std::chrono::steady_clock::now() - start).count(), query});
        }
    }
    std::sort(keys.begin(), keys.end(), [](const Key &a, const Key &b) { return a.time < b.time; });
    const auto percentile = [&keys](size_t share) { return keys[(keys.size() - 1) * share / 100].time; };
    std::printf("%zu keystrokes over %d applications: median %.3f ms, 99th percentile %.3f ms (limit %.1f), "
                "longest %.3f ms (to \"%s\")\n",
                keys.size(), applicationCount, percentile(50), percentile(99), limit, keys.back().time,
                qUtf8Printable(keys.back().query));
    return EXIT_SUCCESS;
}
