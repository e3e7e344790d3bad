#include "app/LibraryActions.h"

#include "app/QuillbayViewModel.h"
#include "app/SelectionKey.h"
#include "foundation/Uuid.h"
#include "workspaces/WorkspaceManager.h"

#include <algorithm>

namespace quillbay {

LibraryActions::LibraryActions(QuillbayViewModel &viewModel, WorkspaceManager &workspaces, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_workspaces(workspaces)
{
    connect(&m_viewModel, &QuillbayViewModel::selectionChanged, this, &LibraryActions::selectionChanged);
    connect(m_viewModel.appFinder(), &AppFinder::allAppsSortOptionChanged, this,
            &LibraryActions::sortOptionChanged);
}

// Every use gets a copy: what it does may replace the list that the entry stands in.

template <typename Use>
void LibraryActions::withApp(const QString &path, Use use) const
{
    AppFinder &finder = *m_viewModel.appFinder();
    const qsizetype place = finder.index().ofPath(path);
    if (place >= 0)
        use(finder, AppItem(finder.apps()[place]));
}

template <typename Use>
void LibraryActions::withFolder(const QString &id, Use use) const
{
    AppFinder &finder = *m_viewModel.appFinder();
    const std::optional<QUuid> wanted = uuidFromString(id);
    for (const AppFolder &entry : finder.folders()) {
        if (entry.id == wanted) {
            use(finder, AppFolder(entry));
            return;
        }
    }
}

template <typename Use>
void LibraryActions::withWorkspace(const QString &id, Use use) const
{
    const std::optional<QUuid> wanted = uuidFromString(id);
    for (const Workspace &entry : m_workspaces.workspaces()) {
        if (entry.id == wanted) {
            use(Workspace(entry));
            return;
        }
    }
}

QString LibraryActions::selection() const
{
    return selectionKey(m_viewModel.selection());
}

void LibraryActions::setSelection(const QString &key)
{
    m_viewModel.setSelection(selectionOfKey(key, m_viewModel.appFinder()->folders()));
}

QString LibraryActions::title() const
{
    return m_viewModel.selection() ? m_viewModel.selection()->title() : tr("Apps");
}

bool LibraryActions::isAllApps() const
{
    return m_viewModel.selection() == SidebarSelection();
}

QString LibraryActions::selectedFolder() const
{
    const AppFolder *folder = m_viewModel.selection() ? m_viewModel.selection()->folder() : nullptr;
    return folder ? uuidString(folder->id) : QString();
}

QString LibraryActions::sortOption() const
{
    return rawValue(m_viewModel.appFinder()->allAppsSortOption());
}

void LibraryActions::setSortOption(const QString &label)
{
    const auto option = appSortOption(label);
    if (!option)
        return;
    m_viewModel.appFinder()->setAllAppsSortOption(*option);
    m_viewModel.appFinder()->saveSortOption();
}

QStringList LibraryActions::sortOptions() const
{
    QStringList labels;
    for (const AppSortOption option : allAppSortOptions)
        labels.append(rawValue(option));
    return labels;
}

bool LibraryActions::isFavorite(const QString &path) const
{
    bool result = false;
    withApp(path, [&](AppFinder &finder, const AppItem &app) { result = finder.isFavorite(app); });
    return result;
}

void LibraryActions::toggleFavorite(const QString &path)
{
    withApp(path, [](AppFinder &finder, const AppItem &app) { finder.toggleFavorite(app); });
}

void LibraryActions::hideApp(const QString &path)
{
    withApp(path, [this](AppFinder &, const AppItem &app) { m_viewModel.hideAppGlobally(app); });
}

void LibraryActions::unhideApp(const QString &path)
{
    withApp(path, [](AppFinder &finder, const AppItem &app) { finder.unhideApp(app); });
}

void LibraryActions::addAppToFolder(const QString &path, const QString &folder)
{
    withApp(path, [&](AppFinder &, const AppItem &app) {
        withFolder(folder,
                   [&](AppFinder &, const AppFolder &entry) { m_viewModel.addAppToFolder(app, entry); });
    });
}

void LibraryActions::removeAppFromFolder(const QString &path, const QString &folder)
{
    withApp(path, [&](AppFinder &, const AppItem &app) {
        withFolder(folder,
                   [&](AppFinder &, const AppFolder &entry) { m_viewModel.removeAppFromFolder(app, entry); });
    });
}

QVariantMap LibraryActions::folder(const QString &id) const
{
    QVariantMap result;
    withFolder(id, [&result](AppFinder &, const AppFolder &entry) {
        result = {{QStringLiteral("name"), entry.name},
                  {QStringLiteral("icon"), entry.icon},
                  {QStringLiteral("color"), entry.color},
                  {QStringLiteral("isPinned"), entry.isPinned}};
    });
    return result;
}

void LibraryActions::createFolder(const QString &name, const QString &icon, const QString &color)
{
    m_viewModel.appFinder()->createFolder(name, icon, color);
}

void LibraryActions::editFolder(const QString &id, const QString &name, const QString &icon,
                                const QString &color)
{
    renameFolder(id, name);
    setFolderColor(id, color);
    setFolderIcon(id, icon);
}

void LibraryActions::renameFolder(const QString &id, const QString &name)
{
    withFolder(id, [&name](AppFinder &finder, const AppFolder &entry) { finder.renameFolder(entry, name); });
}

void LibraryActions::setFolderColor(const QString &id, const QString &color)
{
    withFolder(id,
               [&color](AppFinder &finder, const AppFolder &entry) { finder.setFolderColor(entry, color); });
}

void LibraryActions::setFolderIcon(const QString &id, const QString &icon)
{
    withFolder(id, [&icon](AppFinder &finder, const AppFolder &entry) { finder.setFolderIcon(entry, icon); });
}

void LibraryActions::togglePinFolder(const QString &id)
{
    withFolder(id, [](AppFinder &finder, const AppFolder &entry) { finder.togglePinFolder(entry); });
}

void LibraryActions::deleteFolder(const QString &id)
{
    withFolder(id, [this](AppFinder &, const AppFolder &entry) { m_viewModel.deleteFolder(entry); });
}

void LibraryActions::hideFolder(const QString &id)
{
    withFolder(id, [this](AppFinder &, const AppFolder &entry) { m_viewModel.hideFolderGlobally(entry); });
}

void LibraryActions::unhideFolder(const QString &id)
{
    withFolder(id, [](AppFinder &finder, const AppFolder &entry) { finder.unhideFolder(entry); });
}

QVariantList LibraryActions::folders() const
{
    QVariantList list;
    for (const AppFolder &entry : m_viewModel.appFinder()->folders())
        list.append(
            QVariantMap{{QStringLiteral("id"), uuidString(entry.id)}, {QStringLiteral("name"), entry.name}});
    return list;
}

void LibraryActions::openPicker(const QString &folder)
{
    withFolder(folder, [this](AppFinder &, const AppFolder &entry) {
        m_viewModel.setFolderForPicker(entry);
        m_viewModel.setShowingAppPicker(true);
    });
}

void LibraryActions::moveRootFolder(int from, int to)
{
    m_viewModel.appFinder()->reorderFolders({from}, to);
}

void LibraryActions::createFolderFromCategory(const QString &category)
{
    AppFinder &finder = *m_viewModel.appFinder();
    const AppListModel *group = m_viewModel.groupedAppsByCategory()->group(category);
    const QList<AppItem> members = group ? group->items() : QList<AppItem>();
    finder.createFolder(category, QStringLiteral("folder"), QStringLiteral("#007AFF"));
    if (finder.folders().isEmpty())
        return;
    const AppFolder target = finder.folders().first();
    for (const AppItem &app : members)
        m_viewModel.addAppToFolder(app, target);
}

void LibraryActions::addCategoryToFolder(const QString &category, const QString &folder)
{
    const AppListModel *group = m_viewModel.groupedAppsByCategory()->group(category);
    const QList<AppItem> members = group ? group->items() : QList<AppItem>();
    withFolder(folder, [&](AppFinder &, const AppFolder &entry) {
        for (const AppItem &app : members)
            m_viewModel.addAppToFolder(app, entry);
    });
}

void LibraryActions::createWorkspace(const QString &name, const QString &icon, const QString &color)
{
    m_workspaces.createWorkspace(name, icon, color);
}

void LibraryActions::updateWorkspace(const QString &id, const QString &name, const QString &icon,
                                     const QString &color)
{
    withWorkspace(id,
                  [&](const Workspace &entry) { m_workspaces.updateWorkspace(entry, name, icon, color); });
}

void LibraryActions::deleteWorkspace(const QString &id)
{
    withWorkspace(id, [this](const Workspace &entry) { m_workspaces.deleteWorkspace(entry); });
}

void LibraryActions::activateWorkspace(const QString &id)
{
    withWorkspace(id, [this](const Workspace &entry) {
        m_workspaces.setActiveWorkspaceID(entry.id);
        m_viewModel.setSelection(SidebarSelection());
        m_viewModel.updateFilteredApps();
    });
}

} // namespace quillbay
