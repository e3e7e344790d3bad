#pragma once

#include "foundation/ObservableObject.h"
#include "library/AppItem.h"
#include "uninstaller/AppResidualFile.h"
#include "uninstaller/ResidualScan.h"
#include "uninstaller/ScanStage.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <atomic>
#include <memory>

namespace quillbay {

/// What belongs to one application, and what of it is to go: the state behind one uninstaller sheet, made
/// with it and gone with it. Nothing of it is stored.
///
/// Thread: main thread. A scan's steps run one after another on one worker, which gets values and posts
/// values: the stage as each step begins, without waiting, and the whole result once at the end. Nothing here
/// waits. An object that goes during a scan ends it; nothing of it arrives any more.
class AppUninstallerScanner : public ObservableObject
{
    Q_OBJECT
    /// Text of the stage.
    Q_PROPERTY(QString scanStageText READ scanStageText NOTIFY scanStageChanged)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY scanProgressChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool isSystemApp READ isSystemApp NOTIFY isSystemAppChanged)
    Q_PROPERTY(QString formattedTotalSize READ formattedTotalSize NOTIFY residualFilesChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY residualFilesChanged)

public:
    /// `search.roots` is never null.
    explicit AppUninstallerScanner(ResidualSearch search, QObject *parent = nullptr);
    ~AppUninstallerScanner() override;

    /// The result of the last scan, in the order in which it was found; published whole when a scan ends.
    const QList<AppResidualFile> &residualFiles() const { return m_residualFiles; }
    ScanStage scanStage() const { return m_scanStage; }
    QString scanStageText() const { return rawValue(m_scanStage); }
    double scanProgress() const { return m_scanProgress; } ///< 0 to 1.
    bool isScanning() const { return m_isScanning; }
    /// Whether the application is part of the system. It is scanned all the same.
    bool isSystemApp() const { return m_isSystemApp; }

    /// Those rows that are selected, in their order.
    QList<AppResidualFile> selectedFiles() const;
    int selectedCount() const;
    /// The size of the selected rows together, for people.
    QString formattedTotalSize() const;
    /// All rows, in their order within each category; categories without rows have no entry.
    QHash<ResidualCategory, QList<AppResidualFile>> filesByCategory() const;
    /// False for a category without rows.
    bool isAllSelected(ResidualCategory category) const;

    /// Starts a scan and returns. The stage keeps its value until the first step is announced. A scan that
    /// still runs is given up: nothing of it arrives any more.
    void scan(const AppItem &app);

    /// Ignored for a row that is not there any more.
    void toggleSelection(const AppResidualFile &file);
    /// These select rows too that the user may not delete: they are meant to go by elevation.
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void deselectAll();
    void selectAll(ResidualCategory category);
    void deselectAll(ResidualCategory category);

    /// Takes out the rows of these paths, every one of a path that has several, and those of these packages.
    void removeRows(const QSet<QByteArray> &paths, const QSet<QString> &packageReferences = {});

Q_SIGNALS:
    void residualFilesChanged();
    void scanStageChanged();
    void scanProgressChanged();
    void isScanningChanged();
    void isSystemAppChanged();

private:
    class Run;

    void setIsSystemApp(bool isSystemApp);
    void announce(const ScanStep &step);
    void finish(QList<AppResidualFile> files);
    void setSelected(bool isSelected, std::optional<ResidualCategory> category);

    const ResidualSearch m_search;
    std::shared_ptr<std::atomic_bool> m_stopped; ///< Of the scan that runs; also its identity.
    QList<AppResidualFile> m_residualFiles;
    ScanStage m_scanStage = ScanStage::idle;
    double m_scanProgress = 0;
    bool m_isScanning = false;
    bool m_isSystemApp = false;
};

} // namespace quillbay
