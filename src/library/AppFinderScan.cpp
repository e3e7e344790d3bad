#include "foundation/Console.h"
#include "library/AppFinder.h"
#include "library/CategoryName.h"
#include "library/SearchKey.h"
#include "platform/ApplicationSource.h"
#include "platform/FolderWatch.h"

#include <QSet>

#include <algorithm>

namespace quillbay {

namespace {

AppItem appItem(platform::InstalledApplication &&found)
{
    AppItem app;
    app.category = found.category.isNull() ? categoryName(found.categoryType) : std::move(found.category);
    app.searchKey = searchKey(found.name);
    app.name = std::move(found.name);
    app.path = std::move(found.path);
    app.sortKey = std::move(found.sortKey);
    return app;
}

} // namespace

ScannedLibrary readApplications(const platform::ApplicationSource &source)
{
    std::vector<platform::InstalledApplication> found = source.scan();
    std::stable_sort(found.begin(), found.end(),
                     [](const auto &a, const auto &b) { return a.sortKey < b.sortKey; });
    ScannedLibrary library;
    library.apps.reserve(qsizetype(found.size()));
    QSet<QString> categories; // equal ones share their storage: grouping then compares addresses
    for (platform::InstalledApplication &application : found) {
        AppItem app = appItem(std::move(application));
        app.category = *categories.insert(app.category);
        library.apps.append(std::move(app));
    }
    library.index = AppIndex(library.apps);
    return library;
}

void AppFinder::scanApps()
{
    QMetaObject::invokeMethod(
        this, [this] { setIsScanning(true); }, Qt::QueuedConnection);
    m_pool.start([this] {
        ScannedLibrary found = readApplications(m_surroundings.applications);
        readNewlyAdded(found);
        QMetaObject::invokeMethod(
            this, [this, found = std::move(found)]() mutable { handOver(std::move(found)); },
            Qt::QueuedConnection);
    });
}

void AppFinder::startMonitoring()
{
    m_isMonitoring = true;
    connect(&m_surroundings.folderWatch, &platform::FolderWatch::changed, this, &AppFinder::scheduleRescan);
    const int watched = m_surroundings.folderWatch.watch(m_surroundings.applications.folders());
    printLine(QStringLiteral("📡 Monitoring %1 directories for app changes").arg(watched));
}

void AppFinder::scheduleRescan()
{
    m_rescanTimer.start();
}

void AppFinder::rescan()
{
    printLine(QStringLiteral("🔄 Rescanning apps due to file system change..."));
    scanApps();
}

} // namespace quillbay
