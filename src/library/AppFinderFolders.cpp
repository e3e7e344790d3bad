#include "foundation/MoveRule.h"
#include "library/AppFinder.h"
#include "library/FolderOrder.h"
#include "workspaces/WorkspaceManager.h"

#include <algorithm>

namespace quillbay {

namespace {

/// From 1 January 1970 to 1 January 2001, UTC.
constexpr double secondsUntil2001 = 978307200;

QString foldersKey(const WorkspaceManager &workspaces)
{
    return workspaces.key(QStringLiteral("AppFolders"));
}

} // namespace

void AppFinder::setFolders(const QList<AppFolder> &folders)
{
    publish(m_folders, QList<AppFolder>(folders), &AppFinder::foldersChanged);
    sendResult();
}

void AppFinder::publishSortedFolders()
{
    QList<AppFolder> folders = m_folders;
    sortFolders(folders);
    publish(m_folders, std::move(folders), &AppFinder::foldersChanged);
}

bool AppFinder::changeFolder(QUuid id, const std::function<void(AppFolder &)> &change)
{
    QList<AppFolder> folders = m_folders;
    const auto entry = std::find_if(folders.begin(), folders.end(),
                                    [&id](const AppFolder &folder) { return folder.id == id; });
    if (entry == folders.end())
        return false;
    change(*entry);
    publish(m_folders, std::move(folders), &AppFinder::foldersChanged);
    saveFolders();
    return true;
}

void AppFinder::createFolder(const QString &name, const QString &icon, const QString &color,
                             const std::optional<QUuid> &parentFolderID)
{
    AppFolder folder;
    folder.id = QUuid::createUuid();
    folder.name = name;
    folder.icon = icon;
    folder.color = color;
    folder.parentFolderID = parentFolderID;
    folder.createdAt = m_surroundings.now() - secondsUntil2001;
    folder.sortOrder = nextSortOrder(m_folders);
    publish(m_folders, QList<AppFolder>{folder} + m_folders, &AppFinder::foldersChanged);
    saveFolders();
    publishSortedFolders();
    sendResult();
}

void AppFinder::renameFolder(const AppFolder &folder, const QString &newName)
{
    if (changeFolder(folder.id, [&newName](AppFolder &entry) { entry.name = newName; }))
        sendResult();
}

void AppFinder::togglePinFolder(const AppFolder &folder)
{
    if (!changeFolder(folder.id, [](AppFolder &entry) { entry.isPinned = !entry.isPinned; }))
        return;
    publishSortedFolders();
    sendResult();
}

void AppFinder::setFolderColor(const AppFolder &folder, const QString &color)
{
    if (changeFolder(folder.id, [&color](AppFolder &entry) { entry.color = color; }))
        sendResult();
}

void AppFinder::setFolderIcon(const AppFolder &folder, const QString &icon)
{
    if (changeFolder(folder.id, [&icon](AppFolder &entry) { entry.icon = icon; }))
        sendResult();
}

void AppFinder::addAppToFolder(const AppItem &app, const AppFolder &folder)
{
    const QString url = app.absoluteString();
    const bool isMember = std::any_of(m_folders.cbegin(), m_folders.cend(), [&](const AppFolder &entry) {
        return entry.id == folder.id && entry.appURLs.contains(url);
    });
    if (!isMember && changeFolder(folder.id, [&url](AppFolder &entry) { entry.appURLs.append(url); }))
        sendResult();
}

void AppFinder::removeAppFromFolder(const AppItem &app, const AppFolder &folder)
{
    const QString url = app.absoluteString();
    if (changeFolder(folder.id, [&url](AppFolder &entry) { entry.appURLs.removeAll(url); }))
        sendResult();
}

void AppFinder::reorderAppsInFolder(const AppFolder &folder, const QList<qsizetype> &from, qsizetype to)
{
    if (changeFolder(folder.id, [&](AppFolder &entry) { moveElements(entry.appURLs, from, to); }))
        sendResult();
}

void AppFinder::reorderFolders(const QList<qsizetype> &from, qsizetype to)
{
    QList<AppFolder> roots = getRootFolders();
    moveElements(roots, from, to);
    QList<AppFolder> folders = m_folders;
    renumber(folders, roots);
    publish(m_folders, std::move(folders), &AppFinder::foldersChanged);
    saveFolders();
    updateUnifiedGridOrderFromCurrentState();
    publishSortedFolders();
    sendResult();
}

QList<AppFolder> AppFinder::getRootFolders() const
{
    return rootFolders(m_folders, m_hiddenFolderIDs);
}

QList<AppFolder> AppFinder::getChildFolders(const QUuid &parentID) const
{
    return childFolders(m_folders, parentID, m_hiddenFolderIDs);
}

QList<AppItem> AppFinder::getAppsInFolder(const AppFolder &folder) const
{
    QList<AppItem> members;
    for (const QString &url : folder.appURLs) {
        if (const qsizetype i = index().ofURL(url); i >= 0)
            members.append(apps()[i]);
    }
    return members;
}

void AppFinder::saveFolders()
{
    const QString key = foldersKey(m_surroundings.workspaces);
    bool isExact = false;
    const QByteArray text = m_folderWriter.write(m_folders, &isExact);
    m_surroundings.preferences.setData(key, text);
    if (isExact)
        m_folderCache.remember(key, text, m_folders);
}

void AppFinder::loadFolders()
{
    const QString key = foldersKey(m_surroundings.workspaces);
    const std::optional<QByteArray> stored = m_surroundings.preferences.data(key);
    publish(m_folders, stored ? m_folderCache.decoded(key, *stored) : QList<AppFolder>(),
            &AppFinder::foldersChanged);
}

} // namespace quillbay
