#include "app/QuillbayViewModel.h"
#include "foundation/Console.h"
#include "platform/ApplicationLauncher.h"

#include <QSet>

#include <algorithm>

namespace quillbay {

namespace {

auto entryOf(const QList<AppFolder> &folders, const AppFolder &folder)
{
    return std::find(folders.cbegin(), folders.cend(), folder);
}

} // namespace

void QuillbayViewModel::launchApp(const AppItem &app)
{
    open(app, nullptr);
}

void QuillbayViewModel::launchApp(const QString &path, QWindow *window)
{
    const qsizetype index = m_appFinder.index().ofPath(path);
    if (index >= 0)
        open(AppItem(m_appFinder.apps()[index]), window);
}

void QuillbayViewModel::open(const AppItem &app, QWindow *window)
{
    platform::LaunchRequest request;
    request.path = app.path;
    request.window = window;
    m_launcher.launch(request, [name = app.name](const platform::LaunchResult &result) {
        if (result.outcome != platform::LaunchOutcome::Started)
            printLine(QStringLiteral("⚠️ Failed to launch %1: %2").arg(name, result.reason));
    });
    m_appFinder.addToRecents(app);
    Q_EMIT eventHappened(QStringLiteral("App Launched"), {{QStringLiteral("app_name"), app.name}});
}

void QuillbayViewModel::hideAppGlobally(const AppItem &app)
{
    m_appFinder.hideApp(app);
    afterHiding();
}

void QuillbayViewModel::hideFolderGlobally(const AppFolder &folder)
{
    m_appFinder.hideFolder(folder);
    afterHiding();
}

void QuillbayViewModel::afterHiding()
{
    if (!isSecurityPasswordSet())
        setSelection(SidebarSelection(SidebarSelection::Case::hidden));
    Q_EMIT objectWillChange();
}

void QuillbayViewModel::deleteFolder(const AppFolder &folder)
{
    const AppFolder deleted = folder; // the argument may be the entry
    QList<AppFolder> remaining = m_appFinder.folders();
    remaining.removeIf([&deleted](const AppFolder &entry) { return entry == deleted; });
    m_appFinder.setFolders(remaining);
    m_appFinder.saveFolders();
    if (m_selection && m_selection->folder() && *m_selection->folder() == deleted)
        setSelection(SidebarSelection());
}

QList<AppItem> QuillbayViewModel::appsNotInFolder(const AppFolder &folder) const
{
    const QSet<QString> members(folder.appURLs.cbegin(), folder.appURLs.cend());
    const QSet<QString> hidden = isLocked() ? m_appFinder.hiddenAppPaths() : QSet<QString>();
    QList<AppItem> others;
    for (const AppItem &app : m_appFinder.apps()) {
        if (!hidden.contains(app.path) && !members.contains(app.absoluteString()))
            others.append(app);
    }
    return others;
}

void QuillbayViewModel::moveFolderApp(const AppItem &app, const AppItem &target, const AppFolder &folder)
{
    const auto entry = entryOf(m_appFinder.folders(), folder);
    if (entry == m_appFinder.folders().cend())
        return;
    const qsizetype from = entry->appURLs.indexOf(app.absoluteString());
    const qsizetype to = entry->appURLs.indexOf(target.absoluteString());
    if (from >= 0 && to >= 0 && from != to)
        m_appFinder.reorderAppsInFolder(AppFolder(*entry), {from}, to);
}

void QuillbayViewModel::addAppToFolder(const AppItem &app, const AppFolder &folder)
{
    m_appFinder.addAppToFolder(app, folder);
}

void QuillbayViewModel::removeAppFromFolder(const AppItem &app, const AppFolder &folder)
{
    m_appFinder.removeAppFromFolder(app, folder);
}

bool QuillbayViewModel::handleFolderShortcut(const QString &letter)
{
    QList<AppFolder> matches = m_appFinder.getRootFolders();
    matches.removeIf(
        [&letter](const AppFolder &folder) { return !folder.name.toLower().startsWith(letter); });
    if (matches.isEmpty())
        return false;
    const AppFolder *selected = m_selection ? m_selection->folder() : nullptr;
    const qsizetype current = selected ? matches.indexOf(*selected) : -1;
    setSelection(SidebarSelection::ofFolder(matches[(current + 1) % matches.size()]));
    return true;
}

} // namespace quillbay
