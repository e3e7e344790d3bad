// What the library's operations cost the main thread: library_bench [ROUNDS]
//
// 5,000 applications, 30 workspaces, in each 300 folders of 50 applications, recents, favourites and a stored
// grid order. An operation's time is that of the one call, which waits for nothing: reading and writing the
// preferences on a real disk, the announcements, and the changes of the models that a screen would show.
// Printed beside it, as the floor: the same bytes written by SQLite alone.

#include "app/QuillbayViewModel.h"
#include "foundation/NotificationCenter.h"
#include "foundation/PreferenceStore.h"
#include "platform/none/NoApplications.h"
#include "platform/none/NoBiometrics.h"
#include "platform/none/NoDesktop.h"
#include "workspaces/WorkspaceManager.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using namespace quillbay;

namespace {

constexpr int applicationCount = 5000;
constexpr int workspaceCount = 30;
constexpr int folderCount = 300;
constexpr int memberCount = 50;
constexpr double limit = 8;       ///< Milliseconds.
constexpr double searchLimit = 5; ///< Milliseconds.

QString pathOf(int number)
{
    return QStringLiteral("/usr/share/applications/org.example.application%1.desktop").arg(number);
}

class MadeApplications final : public platform::ApplicationSource
{
public:
    QStringList folders() const override { return {}; }

    std::vector<platform::InstalledApplication> scan() const override
    {
        static const char *const categories[] = {"Development", "Games",  "Graphics", "Internet",
                                                 "Multimedia",  "Office", "System",   "Utilities"};
        std::vector<platform::InstalledApplication> made(applicationCount);
        for (int i = 0; i < applicationCount; ++i) {
            platform::InstalledApplication &application = made[size_t(i)];
            application.name = QStringLiteral("%1 Application %2").arg(QChar('A' + i * 7 % 26)).arg(i);
            application.path = pathOf(i);
            application.category = QString::fromLatin1(categories[i % 8]);
            application.sortKey = application.name.toCaseFolded().toUtf8();
        }
        return made;
    }

    platform::FileDates dates(const QString &) const override { return {1.6e9, 1.6e9}; }
    std::optional<platform::ApplicationDetails> read(const QString &) const override { return {}; }
};

double milliseconds(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Times the call `rounds` times, each after its preparation, and prints the median and the longest.
void measure(const char *title, int rounds, double most, const std::function<void(int)> &call)
{
    std::vector<double> elapsed;
    std::vector<double> processor;
    for (int round = 0; round < rounds; ++round) {
        const double cpu = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        const double start = milliseconds(CLOCK_MONOTONIC);
        call(round);
        elapsed.push_back(milliseconds(CLOCK_MONOTONIC) - start);
        processor.push_back(milliseconds(CLOCK_THREAD_CPUTIME_ID) - cpu);
    }
    std::sort(elapsed.begin(), elapsed.end());
    std::sort(processor.begin(), processor.end());
    const size_t last = elapsed.size() - 1;
    std::printf("%-34s median %6.2f ms, 95th percentile %6.2f, longest %6.2f; processor %6.2f", title,
                elapsed[last / 2], elapsed[last * 95 / 100], elapsed[last], processor[last / 2]);
    if (most > 0)
        std::printf("   (limit %.0f)", most);
    std::printf("\n");
}

/// The folders of one workspace.
QList<AppFolder> madeFolders(int workspace)
{
    QList<AppFolder> folders;
    for (int i = 0; i < folderCount; ++i) {
        AppFolder folder;
        folder.id = QUuid::createUuid();
        folder.name = QStringLiteral("Folder %1 of workspace %2").arg(i).arg(workspace);
        folder.icon = QStringLiteral("folder");
        folder.color = QStringLiteral("#007AFF");
        folder.createdAt = 7e8 + i;
        folder.sortOrder = i;
        for (int member = 0; member < memberCount; ++member)
            folder.appURLs.append(fileURL(pathOf((i * 37 + member * 101 + workspace) % applicationCount)));
        folders.append(folder);
    }
    return folders;
}

struct Library
{
    Library()
        : preferences(folder.filePath(QStringLiteral("preferences.sqlite")))
        , workspaces(preferences, notifications)
        , finder({source, watch, documents, icons, preferences, workspaces, notifications})
    {
    }

    QTemporaryDir folder;
    MadeApplications source;
    platform::NoFolderWatch watch;
    platform::NoRecentDocuments documents;
    platform::NoIconSource icons;
    platform::NoApplicationLauncher launcher;
    platform::NoBiometrics biometrics;
    PreferenceStore preferences;
    NotificationCenter notifications;
    WorkspaceManager workspaces;
    AppFinder finder;
};

void fill(Library &library)
{
    for (int workspace = 0; workspace < workspaceCount; ++workspace) {
        if (workspace > 0)
            library.workspaces.createWorkspace(QStringLiteral("Workspace %1").arg(workspace), {}, {});
        const QList<AppFolder> folders = madeFolders(workspace);
        library.preferences.setData(library.workspaces.key(QStringLiteral("AppFolders")),
                                    encodeFolders(folders));
        QStringList order;
        for (const AppFolder &folder : folders)
            order.append(GridItemIdentifier::folder(folder.id).stringRepresentation());
        library.preferences.setStringArray(library.workspaces.key(QStringLiteral("unifiedGridOrder")), order);
        QStringList favourites;
        for (int i = 0; i < 100; ++i)
            favourites.append(fileURL(pathOf(i * 3 + workspace)));
        library.preferences.setStringArray(library.workspaces.key(QStringLiteral("favoriteApps")),
                                           favourites);
        library.preferences.setStringArray(library.workspaces.key(QStringLiteral("recentApps")),
                                           favourites.mid(0, 7));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 60;
    Library library;
    fill(library);
    QEventLoop loop;
    QObject::connect(&library.finder, &AppFinder::scanFinished, &loop, &QEventLoop::quit);
    QuillbayViewModel viewModel(library.finder, library.launcher, library.biometrics, library.preferences);
    loop.exec();
    // What the program does by itself after the first scan is done before a person switches anything.
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    loop.exec();
    AppFinder &finder = library.finder;
    if (finder.apps().size() != applicationCount || finder.folders().size() != folderCount) {
        std::fprintf(stderr, "the library has %lld applications and %lld folders\n",
                     static_cast<long long>(finder.apps().size()),
                     static_cast<long long>(finder.folders().size()));
        return EXIT_FAILURE;
    }
    std::printf("%d applications, %d workspaces, each with %d folders of %d; %d rounds\n", applicationCount,
                workspaceCount, folderCount, memberCount, rounds);

    const QByteArray folders = encodeFolders(finder.folders());
    measure("floor: SQLite writes the folders", rounds, 0, [&](int round) {
        QByteArray bytes = folders;
        bytes[100] = char('a' + round % 26);
        library.preferences.setData(QStringLiteral("floor"), bytes);
    });

    const QList<Workspace> workspaces = library.workspaces.workspaces();
    const auto switchTo = [&](int round) {
        library.workspaces.setActiveWorkspaceID(workspaces[round % workspaces.size()].id);
    };
    for (const AppSortOption option : {AppSortOption::nameAscending, AppSortOption::category}) {
        finder.setAllAppsSortOption(option);
        finder.saveSortOption();
        std::printf("\nSorted by %s\n", qUtf8Printable(rawValue(option)));
        measure("workspace switch, the first", int(workspaces.size()), limit, switchTo);
        measure("workspace switch, again", rounds, limit, switchTo);
        measure("hide", rounds, limit, [&](int round) { finder.hideApp(finder.apps()[round * 11]); });
        measure("unhide", rounds, limit, [&](int round) { finder.unhideApp(finder.apps()[round * 11]); });
        measure("favourite", rounds, limit,
                [&](int round) { finder.toggleFavorite(finder.apps()[round * 13]); });
        measure("launch", rounds, limit, [&](int round) { viewModel.launchApp(finder.apps()[round * 17]); });
        measure("add to a folder", rounds, limit, [&](int round) {
            finder.addAppToFolder(finder.apps()[4000 + round], finder.folders()[round % folderCount]);
        });
        measure("new folder", rounds, limit, [&](int) {
            finder.createFolder(QStringLiteral("New app folder"), QStringLiteral("folder"),
                                QStringLiteral("#007AFF"));
        });
    }
    std::printf("\n");
    for (const char *query : {"a", "application 12", "office", "xylophone"}) {
        measure(qPrintable(QStringLiteral("searchApps \"%1\"").arg(QLatin1String(query))), rounds,
                searchLimit, [&](int) { finder.searchApps(QString::fromLatin1(query)); });
    }
    return EXIT_SUCCESS;
}
