#pragma once

#include "library/AppItem.h"
#include "uninstaller/AppUninstallerScanner.h"
#include "uninstaller/Deletion.h"
#include "uninstaller/PackageQuestion.h"
#include "uninstaller/ResidualRowsModel.h"
#include "uninstaller/UninstallerServices.h"

#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

class QThreadPool;

namespace quillbay {

class PackageAdapter;

/// One application's way through uninstalling, from the gate to the result: what the sheet shows and does.
///
/// | from | event | to |
/// |---|---|---|
/// | made | access | Scanning |
/// | made | no access | CheckingAccess |
/// | CheckingAccess | access is found, at the earliest after `openSystemSettings` | Scanning |
/// | Scanning | the scan is done | Review |
/// | Review | at least one row was removed | Done |
/// | Review | none was removed | Review, with `showPermissionError` |
///
/// Thread: main thread; nothing here waits. What is removed is removed on a worker, one thing after another.
/// An object that goes meanwhile lets the worker finish the item at hand, with its receipt, and no more; an
/// open question about a package counts as declined.
class UninstallerFlow : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString appName READ appName CONSTANT)
    Q_PROPERTY(QString appPath READ appPath CONSTANT)
    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(QString scanStageText READ scanStageText NOTIFY scanStageChanged)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY scanProgressChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool isSystemApp READ isSystemApp NOTIFY isSystemAppChanged)
    Q_PROPERTY(quillbay::ResidualRowsModel *rows READ rows CONSTANT)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY filesChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY filesChanged)
    Q_PROPERTY(QString formattedTotalSize READ formattedTotalSize NOTIFY filesChanged)
    /// Counts changes of the rows: for bindings on `category`.
    Q_PROPERTY(int revision READ revision NOTIFY filesChanged)
    /// A removal or a putting back runs; another one is ignored meanwhile.
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(bool showPermissionError READ showPermissionError NOTIFY permissionErrorChanged)
    Q_PROPERTY(QString permissionErrorMessage READ permissionErrorMessage NOTIFY permissionErrorChanged)
    /// A package waits for `approve` or `decline`; the texts are empty while none does.
    Q_PROPERTY(bool hasPackageQuestion READ hasPackageQuestion NOTIFY packageQuestionChanged)
    Q_PROPERTY(QString packageText READ packageText NOTIFY packageQuestionChanged)
    Q_PROPERTY(QStringList packagesToRemove READ packagesToRemove NOTIFY packageQuestionChanged)
    Q_PROPERTY(QString packageDataFolder READ packageDataFolder NOTIFY packageQuestionChanged)
    Q_PROPERTY(QString packageTrashNote READ packageTrashNote CONSTANT)
    Q_PROPERTY(int removedCount READ removedCount NOTIFY resultChanged)
    Q_PROPERTY(QString freedText READ freedText NOTIFY resultChanged)
    Q_PROPERTY(int errorCount READ errorCount NOTIFY resultChanged)
    Q_PROPERTY(QStringList errors READ errors NOTIFY resultChanged) ///< The first three.
    Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY putBackChanged)
    Q_PROPERTY(QString putBackText READ putBackText NOTIFY putBackChanged) ///< Empty before the first.

public:
    enum class Stage { CheckingAccess, Scanning, Review, Done };
    Q_ENUM(Stage)

    /// Begins at once. The worker outlives this object and runs one task at a time.
    UninstallerFlow(const AppItem &app, const UninstallerServices &services, QThreadPool &worker);
    ~UninstallerFlow() override;

    QString appName() const { return m_app.name; }
    QString appPath() const { return m_app.path; }
    Stage stage() const { return m_stage; }
    QString scanStageText() const { return m_scanner.scanStageText(); }
    double scanProgress() const { return m_scanner.scanProgress(); }
    bool isScanning() const { return m_scanner.isScanning(); }
    bool isSystemApp() const { return m_scanner.isSystemApp(); }
    ResidualRowsModel *rows() { return &m_rows; }
    int itemCount() const { return int(m_scanner.residualFiles().size()); }
    int selectedCount() const { return m_scanner.selectedCount(); }
    QString formattedTotalSize() const { return m_scanner.formattedTotalSize(); }
    int revision() const { return m_revision; }
    bool isBusy() const { return m_run != nullptr; }
    bool showPermissionError() const { return !m_permissionErrorMessage.isEmpty(); }
    QString permissionErrorMessage() const { return m_permissionErrorMessage; }
    bool hasPackageQuestion() const { return m_question.has_value(); }
    QString packageText() const { return m_question ? m_question->displayText : QString(); }
    QStringList packagesToRemove() const { return m_question ? m_question->packages : QStringList(); }
    QString packageDataFolder() const { return m_question ? m_question->data : QString(); }
    QString packageTrashNote() const;
    int removedCount() const { return m_result.removedCount; }
    QString freedText() const;
    int errorCount() const { return int(m_result.errors.size()); }
    QStringList errors() const { return m_result.errors.mid(0, 3); }
    bool canPutBack() const;
    QString putBackText() const { return m_putBackText; }

    /// Opens the place where access is granted, and looks every two seconds from then on.
    Q_INVOKABLE void openSystemSettings();

    /// The heading of a category, by its display name as in the rows.
    Q_INVOKABLE quillbay::ResidualCategorySummary category(const QString &name) const;
    /// Ignored for rows that the user may not delete, and for those that are gone.
    Q_INVOKABLE void toggle(const QString &rowId);
    Q_INVOKABLE void selectAll() { m_scanner.selectAll(); }
    Q_INVOKABLE void deselectAll() { m_scanner.deselectAll(); }
    Q_INVOKABLE void selectAllIn(const QString &category);
    Q_INVOKABLE void deselectAllIn(const QString &category);

    /// Start removing the selected rows. Ignored but in a review, while busy, and for system applications.
    Q_INVOKABLE void moveToTrash() { performDeletion(DeletionMethod::Trash); }
    Q_INVOKABLE void deletePermanently() { performDeletion(DeletionMethod::Permanent); }
    void performDeletion(DeletionMethod method);
    Q_INVOKABLE void dismissPermissionError();

    /// The answer to the question about a package.
    Q_INVOKABLE void approve() { answerPackageQuestion(true); }
    Q_INVOKABLE void decline() { answerPackageQuestion(false); }

    /// Brings back what this flow moved to the Trash, as far as it can be. The result stays as it was told.
    Q_INVOKABLE void putBack();

Q_SIGNALS:
    void stageChanged();
    void scanStageChanged();
    void scanProgressChanged();
    void isScanningChanged();
    void isSystemAppChanged();
    void filesChanged();
    void isBusyChanged();
    void permissionErrorChanged();
    void packageQuestionChanged();
    void resultChanged();
    void putBackChanged();

private:
    class Run;

    void setStage(Stage stage);
    void startScan();
    void pollAccess();
    void updateFiles();
    void finishScan();
    void begin(const std::shared_ptr<Run> &run);
    void end();
    void ask(const PackageQuestion &question);
    void answerPackageQuestion(bool isApproved);
    void finishDeletion(const DeletionResult &result);
    void finishPutBack(const PutBackResult &result);

    const AppItem m_app;
    const UninstallerServices m_services;
    QThreadPool &m_worker;
    const std::shared_ptr<PackageAdapter> m_packages;
    AppUninstallerScanner m_scanner;
    ResidualRowsModel m_rows;
    QTimer m_accessPoll;
    Stage m_stage = Stage::CheckingAccess;
    int m_revision = 0;
    std::shared_ptr<Run> m_run; ///< Of the worker's task that is waited for.
    std::optional<PackageQuestion> m_question;
    QString m_permissionErrorMessage;
    DeletionResult m_result; ///< Its receipt holds what can still be put back.
    QString m_putBackText;
};

} // namespace quillbay
