#include "uninstaller/ResidualScan.h"

#include "uninstaller/DirectorySize.h"
#include "uninstaller/VisibleEntries.h"

#include <QFile>
#include <QSet>

#include <utility>

namespace quillbay {

ResidualScan::ResidualScan(const AppItem &app, const ResidualSearch &search, const std::atomic_bool &stopped)
    : m_app(app)
    , m_search(search)
    , m_stopped(stopped)
    , m_layout(search.roots->layout())
    , m_protected(m_layout.sharedFolders, search.roots->mountPoints())
    , m_rules({app.name, {}, {}, {}})
    , m_isSystemApp(isSystemPath(app.path))
{
}

QList<AppResidualFile> ResidualScan::run(const ScanStep &step)
{
    m_category = step.category;
    return m_stopped ? QList<AppResidualFile>() : withoutPackageFiles(rowsOf(step));
}

QList<AppResidualFile> ResidualScan::rowsOf(const ScanStep &step)
{
    using enum ScanStage;
    const Matches application = &ResidualRules::matchesApplication;
    switch (step.stage) {
    case bundle:
        return applicationRows();
    case preferences:
        return children(m_layout.preferences, application, Size::File);
    case appSupport:
        return children(m_layout.appSupport, application, Size::Tree);
    case caches:
        return childrenTwice(m_layout.caches, m_rules.hasIdentifier());
    case logs:
        return childrenTwice(m_layout.logs, true);
    case containers:
        return m_rules.hasIdentifier() ? named(m_layout.containers) : QList<AppResidualFile>();
    case groupContainers:
        return children(m_layout.groupContainers, &ResidualRules::matchesSegment, Size::Tree);
    case launchAgents:
        return children(m_layout.launchAgents, application, Size::File);
    case crashReports:
        return children(m_layout.crashReports, &ResidualRules::matchesName, Size::File);
    case savedState:
        return named(m_layout.savedState);
    case extensions:
        return children(m_layout.extensions, &ResidualRules::matchesIdentifier, Size::Tree);
    case receipts:
        return children(m_layout.receipts, application, Size::File);
    case idle:
    case done:
        break;
    }
    Q_UNREACHABLE();
}

QList<AppResidualFile> ResidualScan::applicationRows()
{
    const QByteArray path = QFile::encodeName(m_app.path);
    const platform::ApplicationFacts facts = m_search.roots->factsOf(m_app.path, m_app.name);
    const std::optional<ApplicationOwner> owner =
        m_search.packages.ownerOf ? m_search.packages.ownerOf(path) : std::nullopt;
    ResidualNames names{m_app.name, facts.identifier, facts.wholeNames, facts.programNames};
    if (owner) {
        names.wholeNames += owner->packageNames;
        names.programNames += owner->packageNames;
        m_isSystemApp = m_isSystemApp || owner->isEssential;
    }
    m_rules = ResidualRules(names);
    if (owner)
        return {packageRow(*owner)};

    QList<AppResidualFile> rows;
    if (!m_protected.contains(path)) {
        rows += residualFile(path, m_category, directorySize(path, &m_stopped));
        rows.last().displayName = m_app.name + QStringLiteral(".app");
    }
    for (const QByteArray &own : facts.ownFiles)
        append(rows, own, Size::Tree);
    return rows;
}

QList<AppResidualFile> ResidualScan::children(const QList<QByteArray> &folders, Matches matches,
                                              Size size) const
{
    QList<AppResidualFile> rows;
    for (const QByteArray &folder : folders) {
        for (const FolderEntry &entry : visibleEntries(folder)) {
            if ((m_rules.*matches)(entry.name))
                append(rows, folder + '/' + entry.name, size);
        }
    }
    return rows;
}

QList<AppResidualFile> ResidualScan::childrenTwice(const QList<QByteArray> &folders, bool secondLook) const
{
    QList<AppResidualFile> rows = children(folders, &ResidualRules::matchesApplication, Size::Tree);
    for (const QByteArray &folder : secondLook ? folders : QList<QByteArray>()) {
        for (const FolderEntry &entry : visibleEntries(folder)) {
            if (!entry.isFolder && m_rules.matchesApplication(entry.name))
                append(rows, folder + '/' + entry.name, Size::File);
        }
    }
    return rows;
}

QList<AppResidualFile> ResidualScan::named(const QList<platform::NamedChild> &places) const
{
    QList<AppResidualFile> rows;
    for (const platform::NamedChild &place : places) {
        for (const QByteArray &path : m_rules.pathsOf(place))
            append(rows, path, Size::Tree);
    }
    return rows;
}

void ResidualScan::append(QList<AppResidualFile> &rows, const QByteArray &path, Size size) const
{
    if (m_stopped || m_protected.contains(path))
        return;
    const qint64 bytes = size == Size::Tree ? directorySize(path, &m_stopped) : fileSize(path);
    AppResidualFile row = residualFile(path, m_category, bytes);
    if (row.identity)
        rows += std::move(row);
}

QList<AppResidualFile> ResidualScan::withoutPackageFiles(QList<AppResidualFile> rows) const
{
    if (!m_search.packages.ofPackages)
        return rows;
    QList<QByteArray> shared;
    for (const AppResidualFile &row : rows) {
        if (!row.path.isEmpty() && !row.path.startsWith(m_layout.home + '/'))
            shared += row.path;
    }
    if (shared.isEmpty())
        return rows;
    const QList<QByteArray> answer = m_search.packages.ofPackages(shared);
    const QSet<QByteArray> ofPackages(answer.begin(), answer.end());
    rows.removeIf([&](const AppResidualFile &row) { return ofPackages.contains(row.path); });
    return rows;
}

bool isSystemPath(const QString &path)
{
    return path.startsWith(QLatin1String("/System/"));
}

} // namespace quillbay
