#include "app/FolderContents.h"

#include "app/AppListModel.h"
#include "app/QuillbayViewModel.h"
#include "foundation/Uuid.h"

#include <algorithm>
#include <utility>

namespace quillbay {

FolderContents::FolderContents(const QuillbayViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_finder(*viewModel.appFinder())
{
    connect(&m_finder, &AppFinder::foldersChanged, this, &FolderContents::scheduleUpdate);
    connect(&m_finder, &AppFinder::appsChanged, this, &FolderContents::scheduleUpdate);
    connect(&m_finder, &AppFinder::hiddenAppPathsChanged, this, &FolderContents::scheduleUpdate);
    connect(&m_finder, &AppFinder::hiddenFolderIDsChanged, this, &FolderContents::scheduleUpdate);
    connect(&m_viewModel, &SecurityLock::isHiddenUnlockedChanged, this, &FolderContents::update);
    connect(&m_viewModel, &SecurityLock::securityChanged, this, &FolderContents::update);
}

AppListModel *FolderContents::apps(const QString &folderId)
{
    const std::optional<QUuid> id = uuidFromString(folderId);
    const AppFolder *entry = id ? folder(*id) : nullptr;
    if (!entry)
        return nullptr;
    if (const auto known = m_contents.constFind(*id); known != m_contents.cend())
        return known->model;
    Content &content = m_contents[*id];
    content.model = new AppListModel(this);
    fill(content, *entry);
    return content.model;
}

QString FolderContents::name(const QString &folderId) const
{
    const std::optional<QUuid> id = uuidFromString(folderId);
    const AppFolder *entry = id ? folder(*id) : nullptr;
    return entry ? entry->name : QString();
}

const AppFolder *FolderContents::folder(const QUuid &id) const
{
    const QList<AppFolder> &folders = m_finder.folders();
    const auto found = std::find_if(folders.cbegin(), folders.cend(),
                                    [&id](const AppFolder &folder) { return folder.id == id; });
    return found == folders.cend() ? nullptr : &*found;
}

void FolderContents::fill(Content &content, const AppFolder &folder) const
{
    // A hidden folder stands in the hidden list alone, where hidden applications are at home.
    const bool isWhole = m_finder.hiddenFolderIDs().contains(folder.id) && !m_viewModel.isLocked();
    const QSet<QString> hidden = isWhole ? QSet<QString>() : m_finder.hiddenAppPaths();
    if (content.members.isSharedWith(folder.appURLs) && content.apps.isSharedWith(m_finder.apps()) &&
        content.hidden == hidden)
        return;
    content.members = folder.appURLs;
    content.apps = m_finder.apps();
    content.hidden = hidden;
    QList<AppItem> shown = m_finder.getAppsInFolder(folder);
    shown.removeIf([&hidden](const AppItem &app) { return hidden.contains(app.path); });
    content.model->setItems(shown);
}

void FolderContents::scheduleUpdate()
{
    if (m_contents.isEmpty() || std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &FolderContents::update, Qt::QueuedConnection);
}

void FolderContents::update()
{
    m_isScheduled = false;
    QHash<QUuid, const AppFolder *> folders;
    for (const AppFolder &folder : m_finder.folders())
        folders.insert(folder.id, &folder);
    m_contents.removeIf([&](const QHash<QUuid, Content>::iterator entry) {
        if (const AppFolder *folder = folders.value(entry.key())) {
            fill(*entry, *folder);
            return false;
        }
        entry->model->deleteLater();
        return true;
    });
}

} // namespace quillbay
