#include "uninstaller/UninstallerFlow.h"

#include "foundation/ByteCount.h"
#include "uninstaller/PackageAdapter.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSemaphore>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

namespace quillbay {

namespace {

std::optional<ResidualCategory> categoryOf(const QString &name)
{
    for (const ResidualCategory category : allResidualCategories) {
        if (rawValue(category) == name)
            return category;
    }
    return std::nullopt;
}

QString putBackOutcome(const PutBackResult &result)
{
    const qsizetype count = result.restored.size();
    QStringList lines{count == 1 ? QStringLiteral("1 item was put back.")
                                 : QStringLiteral("%1 items were put back.").arg(count)};
    if (!result.left.isEmpty())
        lines += QStringLiteral("%1 item(s) could not be put back:").arg(result.left.size());
    for (const PutBackFailure &failure : result.left.mid(0, 3))
        lines += failure.message;
    return lines.join(u'\n');
}

} // namespace

/// What the worker's task has of its flow: a way to post to it while it is there and waits for that task, and
/// its answers.
class UninstallerFlow::Run : public std::enable_shared_from_this<Run>
{
public:
    explicit Run(UninstallerFlow *flow)
        : m_flow(flow)
    {
    }

    std::stop_token stop() const { return m_stop.get_token(); }

    template <typename Call>
    void post(Call call)
    {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [run = shared_from_this(), call = std::move(call)] {
                if (run->m_flow && run->m_flow->m_run == run)
                    call(*run->m_flow);
            },
            Qt::QueuedConnection);
    }

    bool ask(const PackageQuestion &question)
    {
        post([question](UninstallerFlow &flow) { flow.ask(question); });
        m_answers.acquire();
        return m_isApproved;
    }

    void answer(bool isApproved)
    {
        m_isApproved = isApproved;
        m_answers.release();
    }

    void abandon()
    {
        m_stop.request_stop();
        answer(false);
    }

private:
    const QPointer<UninstallerFlow> m_flow; ///< Looked at on the main thread alone.
    std::stop_source m_stop;
    QSemaphore m_answers;
    std::atomic_bool m_isApproved = false;
};

UninstallerFlow::UninstallerFlow(const AppItem &app, const UninstallerServices &services, QThreadPool &worker)
    : m_app(app)
    , m_services(services)
    , m_worker(worker)
    , m_packages(std::make_shared<PackageAdapter>(services.packages))
    , m_scanner({services.roots, m_packages->queries()})
    , m_accessPoll(this)
{
    using Scanner = AppUninstallerScanner;
    connect(&m_scanner, &Scanner::scanStageChanged, this, &UninstallerFlow::scanStageChanged);
    connect(&m_scanner, &Scanner::scanProgressChanged, this, &UninstallerFlow::scanProgressChanged);
    connect(&m_scanner, &Scanner::isScanningChanged, this, &UninstallerFlow::isScanningChanged);
    connect(&m_scanner, &Scanner::isScanningChanged, this, &UninstallerFlow::finishScan);
    connect(&m_scanner, &Scanner::isSystemAppChanged, this, &UninstallerFlow::isSystemAppChanged);
    connect(&m_scanner, &Scanner::residualFilesChanged, this, &UninstallerFlow::updateFiles);
    m_accessPoll.setInterval(std::chrono::seconds(2));
    connect(&m_accessPoll, &QTimer::timeout, this, &UninstallerFlow::pollAccess);
    if (m_services.access.hasAccess())
        startScan();
}

UninstallerFlow::~UninstallerFlow()
{
    if (m_run)
        m_run->abandon();
}

void UninstallerFlow::setStage(Stage stage)
{
    m_stage = stage;
    Q_EMIT stageChanged();
}

void UninstallerFlow::startScan()
{
    setStage(Stage::Scanning);
    m_scanner.scan(m_app);
}

void UninstallerFlow::openSystemSettings()
{
    if (m_stage != Stage::CheckingAccess)
        return;
    m_services.access.openSystemSettings();
    m_accessPoll.start();
}

void UninstallerFlow::pollAccess()
{
    if (!m_services.access.hasAccess())
        return;
    m_accessPoll.stop();
    startScan();
}

void UninstallerFlow::finishScan()
{
    if (m_stage == Stage::Scanning && !m_scanner.isScanning() && m_scanner.scanStage() == ScanStage::done)
        setStage(Stage::Review);
}

void UninstallerFlow::updateFiles()
{
    m_rows.setFiles(m_scanner.residualFiles());
    ++m_revision;
    Q_EMIT filesChanged();
}

ResidualCategorySummary UninstallerFlow::category(const QString &name) const
{
    return m_rows.summary(name);
}

void UninstallerFlow::toggle(const QString &rowId)
{
    const QUuid id(rowId);
    const QList<AppResidualFile> &files = m_scanner.residualFiles();
    const auto file =
        std::find_if(files.begin(), files.end(), [&](const AppResidualFile &one) { return one.id == id; });
    if (file != files.end() && file->isUserDeletable)
        m_scanner.toggleSelection(AppResidualFile(*file));
}

void UninstallerFlow::selectAllIn(const QString &category)
{
    if (const auto known = categoryOf(category))
        m_scanner.selectAll(*known);
}

void UninstallerFlow::deselectAllIn(const QString &category)
{
    if (const auto known = categoryOf(category))
        m_scanner.deselectAll(*known);
}

void UninstallerFlow::begin(const std::shared_ptr<Run> &run)
{
    m_run = run;
    Q_EMIT isBusyChanged();
    Q_EMIT putBackChanged();
}

void UninstallerFlow::end()
{
    m_run.reset();
    Q_EMIT isBusyChanged();
    Q_EMIT putBackChanged();
}

void UninstallerFlow::performDeletion(DeletionMethod method)
{
    if (m_stage != Stage::Review || isBusy() || isSystemApp())
        return;
    const auto run = std::make_shared<Run>(this);
    begin(run);
    m_worker.start(
        [run, method, rows = m_scanner.selectedFiles(), services = m_services, packages = m_packages] {
            const AskForPackage ask = [&run](const PackageQuestion &question) { return run->ask(question); };
            run->post([result = deleteRows(rows, method, services, *packages, ask, run->stop())](
                          UninstallerFlow &flow) { flow.finishDeletion(result); });
        });
}

void UninstallerFlow::finishDeletion(const DeletionResult &result)
{
    m_scanner.removeRows(result.removedPaths, result.removedPackages);
    end();
    if (result.removedCount < 1) {
        m_permissionErrorMessage = nothingRemovedText(result.errors);
        Q_EMIT permissionErrorChanged();
        return;
    }
    m_result = result;
    Q_EMIT resultChanged();
    setStage(Stage::Done);
    Q_EMIT putBackChanged();
}

void UninstallerFlow::dismissPermissionError()
{
    m_permissionErrorMessage.clear();
    Q_EMIT permissionErrorChanged();
}

void UninstallerFlow::ask(const PackageQuestion &question)
{
    m_question = question;
    Q_EMIT packageQuestionChanged();
}

void UninstallerFlow::answerPackageQuestion(bool isApproved)
{
    if (!m_question)
        return;
    m_question.reset();
    m_run->answer(isApproved);
    Q_EMIT packageQuestionChanged();
}

QString UninstallerFlow::packageTrashNote() const
{
    return QStringLiteral("A package does not go to the Trash. This cannot be undone.");
}

QString UninstallerFlow::freedText() const
{
    return byteCountText(m_result.freedBytes);
}

bool UninstallerFlow::canPutBack() const
{
    const auto &records = m_result.receipt.records;
    return m_stage == Stage::Done && !isBusy() &&
           std::any_of(records.begin(), records.end(),
                       [](const RemovalRecord &record) { return record.method == DeletionMethod::Trash; });
}

void UninstallerFlow::putBack()
{
    if (!canPutBack())
        return;
    const auto run = std::make_shared<Run>(this);
    begin(run);
    m_worker.start([run, receipt = m_result.receipt, services = m_services] {
        run->post([result = putBackRows(receipt, services, run->stop())](UninstallerFlow &flow) {
            flow.finishPutBack(result);
        });
    });
}

void UninstallerFlow::finishPutBack(const PutBackResult &result)
{
    QSet<QByteArray> settled(result.restored.begin(), result.restored.end());
    for (const PutBackFailure &failure : result.left) {
        if (failure.reason == PutBackFailure::Reason::Gone)
            settled.insert(failure.path);
    }
    m_result.receipt.records.removeIf(
        [&](const RemovalRecord &record) { return settled.contains(record.path); });
    m_putBackText = putBackOutcome(result);
    end();
}

} // namespace quillbay
