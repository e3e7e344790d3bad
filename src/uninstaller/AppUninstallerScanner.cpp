#include "uninstaller/AppUninstallerScanner.h"

#include "foundation/ByteCount.h"
#include "platform/ThreadPriority.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <algorithm>
#include <thread>
#include <utility>

namespace quillbay {

/// What a scan's worker has of its scanner: a way to post to it while it is there and still waits for that
/// scan.
class AppUninstallerScanner::Run
{
public:
    explicit Run(AppUninstallerScanner *scanner)
        : m_scanner(scanner)
        , m_stopped(scanner->m_stopped)
    {
    }

    const std::atomic_bool &stopped() const { return *m_stopped; }

    template <typename Call>
    void post(Call call) const
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [scanner = m_scanner, run = m_stopped, call = std::move(call)]() mutable {
                if (scanner && scanner->m_stopped == run)
                    call(*scanner);
            },
            Qt::QueuedConnection);
    }

private:
    QPointer<AppUninstallerScanner> m_scanner; ///< Only passed on by the worker.
    std::shared_ptr<std::atomic_bool> m_stopped;
};

AppUninstallerScanner::AppUninstallerScanner(ResidualSearch search, QObject *parent)
    : ObservableObject(parent)
    , m_search(std::move(search))
{
}

AppUninstallerScanner::~AppUninstallerScanner()
{
    if (m_stopped)
        *m_stopped = true;
}

void AppUninstallerScanner::scan(const AppItem &app)
{
    if (m_stopped)
        *m_stopped = true;
    m_stopped = std::make_shared<std::atomic_bool>(false);
    publish(m_residualFiles, {}, &AppUninstallerScanner::residualFilesChanged);
    publish(m_isScanning, true, &AppUninstallerScanner::isScanningChanged);
    publish(m_scanProgress, 0.0, &AppUninstallerScanner::scanProgressChanged);
    const Run run(this);
    run.post([isSystem = isSystemPath(app.path)](AppUninstallerScanner &scanner) {
        scanner.setIsSystemApp(isSystem);
    });
    const auto work = [run, app, search = m_search] {
        platform::lowerThreadPriority(platform::BackgroundWork::Awaited);
        QList<AppResidualFile> files;
        std::optional<ResidualScan> scan;
        for (const ScanStep &step : scanSteps) {
            run.post([step](AppUninstallerScanner &scanner) { scanner.announce(step); });
            if (!scan)
                scan.emplace(app, search, run.stopped());
            files += scan->run(step);
            if (run.stopped())
                return;
            if (step.stage == ScanStage::bundle && scan->isSystemApp() != isSystemPath(app.path))
                run.post([](AppUninstallerScanner &scanner) { scanner.setIsSystemApp(true); });
        }
        run.post([files = std::move(files)](AppUninstallerScanner &scanner) mutable {
            scanner.finish(std::move(files));
        });
    };
    // A thread of its own, since none takes its priority back; the pool's waits for it, as the program's end
    // does for the pool.
    QThreadPool::globalInstance()->start([work] { std::thread(work).join(); });
}

void AppUninstallerScanner::setIsSystemApp(bool isSystemApp)
{
    publish(m_isSystemApp, isSystemApp, &AppUninstallerScanner::isSystemAppChanged);
}

void AppUninstallerScanner::announce(const ScanStep &step)
{
    publish(m_scanStage, step.stage, &AppUninstallerScanner::scanStageChanged);
    publish(m_scanProgress, step.progress, &AppUninstallerScanner::scanProgressChanged);
}

void AppUninstallerScanner::finish(QList<AppResidualFile> files)
{
    m_stopped.reset();
    publish(m_residualFiles, std::move(files), &AppUninstallerScanner::residualFilesChanged);
    publish(m_scanStage, ScanStage::done, &AppUninstallerScanner::scanStageChanged);
    publish(m_scanProgress, 1.0, &AppUninstallerScanner::scanProgressChanged);
    publish(m_isScanning, false, &AppUninstallerScanner::isScanningChanged);
}

QList<AppResidualFile> AppUninstallerScanner::selectedFiles() const
{
    QList<AppResidualFile> selected;
    std::copy_if(m_residualFiles.begin(), m_residualFiles.end(), std::back_inserter(selected),
                 [](const AppResidualFile &file) { return file.isSelected; });
    return selected;
}

int AppUninstallerScanner::selectedCount() const
{
    return int(std::count_if(m_residualFiles.begin(), m_residualFiles.end(),
                             [](const AppResidualFile &file) { return file.isSelected; }));
}

QString AppUninstallerScanner::formattedTotalSize() const
{
    qint64 total = 0;
    for (const AppResidualFile &file : m_residualFiles) {
        if (file.isSelected)
            total = addByteCounts(total, file.sizeBytes);
    }
    return byteCountText(total);
}

QHash<ResidualCategory, QList<AppResidualFile>> AppUninstallerScanner::filesByCategory() const
{
    QHash<ResidualCategory, QList<AppResidualFile>> groups;
    for (const AppResidualFile &file : m_residualFiles)
        groups[file.category] += file;
    return groups;
}

bool AppUninstallerScanner::isAllSelected(ResidualCategory category) const
{
    bool isEmpty = true;
    for (const AppResidualFile &file : m_residualFiles) {
        if (file.category != category)
            continue;
        if (!file.isSelected)
            return false;
        isEmpty = false;
    }
    return !isEmpty;
}

void AppUninstallerScanner::toggleSelection(const AppResidualFile &file)
{
    const auto found = std::find_if(m_residualFiles.cbegin(), m_residualFiles.cend(),
                                    [&](const AppResidualFile &row) { return row.id == file.id; });
    if (found == m_residualFiles.cend())
        return;
    const qsizetype index = found - m_residualFiles.cbegin();
    Q_EMIT objectWillChange();
    AppResidualFile &row = m_residualFiles[index];
    row.isSelected = !row.isSelected;
    Q_EMIT residualFilesChanged();
}

void AppUninstallerScanner::selectAll()
{
    setSelected(true, std::nullopt);
}

void AppUninstallerScanner::deselectAll()
{
    setSelected(false, std::nullopt);
}

void AppUninstallerScanner::selectAll(ResidualCategory category)
{
    setSelected(true, category);
}

void AppUninstallerScanner::deselectAll(ResidualCategory category)
{
    setSelected(false, category);
}

void AppUninstallerScanner::setSelected(bool isSelected, std::optional<ResidualCategory> category)
{
    Q_EMIT objectWillChange();
    for (AppResidualFile &file : m_residualFiles) {
        if (!category || file.category == *category)
            file.isSelected = isSelected;
    }
    Q_EMIT residualFilesChanged();
}

void AppUninstallerScanner::removeRows(const QSet<QByteArray> &paths, const QSet<QString> &packageReferences)
{
    Q_EMIT objectWillChange();
    m_residualFiles.removeIf([&](const AppResidualFile &file) {
        return file.isPackage() ? packageReferences.contains(file.packageReference)
                                : paths.contains(file.path);
    });
    Q_EMIT residualFilesChanged();
}

} // namespace quillbay
