#pragma once

#include "library/AppItem.h"
#include "platform/ResidualRoots.h"
#include "uninstaller/AppResidualFile.h"
#include "uninstaller/ApplicationRows.h"
#include "uninstaller/ProtectedPaths.h"
#include "uninstaller/ResidualRules.h"
#include "uninstaller/ScanStage.h"

#include <atomic>
#include <functional>
#include <memory>

namespace quillbay {

/// What a scan asks: where applications leave files, and what packages there are.
struct ResidualSearch
{
    std::shared_ptr<const platform::ResidualRoots> roots;
    PackageQueries packages = {};
};

/// One scan for what belongs to an application. Made and run on one worker; values in, values out.
///
/// | step | rule | size |
/// |---|---|---|
/// | application | the application itself, or its package | tree |
/// | preferences, launch agents, receipts | matches the application | file; a folder counts 0 |
/// | application support | matches the application | tree |
/// | caches, logs | matches the application; then once more what is no folder | tree; file |
/// | containers, saved state | the child of that very name | tree |
/// | group containers | matches a part of the identifier | tree |
/// | crash reports | matches the name | file |
/// | extensions | matches the identifier | tree |
///
/// The rules are those of `ResidualRules`. Containers, group containers, saved state and extensions give
/// nothing without an identifier; the second look into caches is left out without one, that into logs is not.
/// The second look gives a matching file a second row: nothing is sorted and no double is taken out, here or
/// between steps. What begins with a dot is never a row. What cannot be read gives nothing.
///
/// Against all rules, none of these is ever a row: what `ProtectedPaths` holds; files of packages, which go
/// with their package or not at all; what vanished before its row was made.
class ResidualScan
{
public:
    /// `stopped` may become true at any time: the scan then ends soon and what it found is incomplete.
    ResidualScan(const AppItem &app, const ResidualSearch &search, const std::atomic_bool &stopped);

    /// Whether the application is part of the system: by its path, or, once the first step has run, by what
    /// its package manager says.
    bool isSystemApp() const { return m_isSystemApp; }

    /// Runs one of the steps of `scanSteps`; the first must run before the others, which use the names that
    /// it finds out.
    QList<AppResidualFile> run(const ScanStep &step);

private:
    enum class Size { File, Tree };
    using Matches = bool (ResidualRules::*)(const QByteArray &entry) const;

    QList<AppResidualFile> rowsOf(const ScanStep &step);
    QList<AppResidualFile> applicationRows();
    QList<AppResidualFile> children(const QList<QByteArray> &folders, Matches matches, Size size) const;
    QList<AppResidualFile> childrenTwice(const QList<QByteArray> &folders, bool secondLook) const;
    QList<AppResidualFile> named(const QList<platform::NamedChild> &places) const;
    void append(QList<AppResidualFile> &rows, const QByteArray &path, Size size) const;
    QList<AppResidualFile> withoutPackageFiles(QList<AppResidualFile> rows) const;

    const AppItem m_app;
    const ResidualSearch m_search;
    const std::atomic_bool &m_stopped;
    const platform::ResidualLayout m_layout;
    const ProtectedPaths m_protected;
    ResidualRules m_rules;
    ResidualCategory m_category = ResidualCategory::appBundle; ///< Of the step that runs.
    bool m_isSystemApp;
};

/// Whether an application of this path lies in the part of the system that nobody may change.
bool isSystemPath(const QString &path);

} // namespace quillbay
