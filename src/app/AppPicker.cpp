#include "app/AppPicker.h"

#include "app/ShownApps.h"

#include <algorithm>

namespace quillbay {

void AppPicker::setViewModel(QuillbayViewModel *viewModel)
{
    if (m_viewModel || !viewModel)
        return;
    m_viewModel = viewModel;
    if (const auto &folder = viewModel->folderForPicker()) {
        m_folder = *folder;
        m_excluded = QSet<QString>(folder->appURLs.cbegin(), folder->appURLs.cend());
        const AppFinder *finder = viewModel->appFinder();
        connect(finder, &AppFinder::appsChanged, this, &AppPicker::scheduleUpdate);
        connect(finder, &AppFinder::foldersChanged, this, &AppPicker::scheduleUpdate);
        readLibrary();
    }
    Q_EMIT viewModelChanged();
}

void AppPicker::setSearchQuery(const QString &query)
{
    if (query == m_searchQuery)
        return;
    m_searchQuery = query;
    Q_EMIT searchQueryChanged();
    updateList();
}

void AppPicker::toggle(const QString &path)
{
    const auto isListed = [&path](const PickerEntry &entry) { return entry.app.path == path; };
    if (m_inFolder.contains(path) || std::none_of(items().cbegin(), items().cend(), isListed))
        return;
    if (!m_selected.removeOne(path))
        m_selected.append(path);
    updateList();
}

void AppPicker::addSelected()
{
    if (!m_viewModel)
        return;
    AppFinder &finder = *m_viewModel->appFinder();
    finder.disconnect(this);
    for (const QString &path : qAsConst(m_selected)) {
        const qsizetype place = finder.index().ofPath(path);
        if (place >= 0)
            m_viewModel->addAppToFolder(AppItem(finder.apps()[place]), m_folder);
    }
}

void AppPicker::scheduleUpdate()
{
    if (m_isScheduled)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            if (m_viewModel)
                readLibrary();
        },
        Qt::QueuedConnection);
}

void AppPicker::readLibrary()
{
    const AppFinder &finder = *m_viewModel->appFinder();
    const auto entry = std::find(finder.folders().cbegin(), finder.folders().cend(), m_folder);
    if (entry != finder.folders().cend())
        m_folder = *entry;
    else
        m_folder.appURLs.clear();
    const QSet<QString> members(m_folder.appURLs.cbegin(), m_folder.appURLs.cend());
    m_excluded.intersect(members);
    AppFolder excluded = m_folder;
    excluded.appURLs = m_excluded.values();
    m_choices = m_viewModel->appsNotInFolder(excluded);

    m_inFolder.clear();
    for (const AppItem &app : qAsConst(m_choices)) {
        if (members.size() > m_excluded.size() && members.contains(app.absoluteString()))
            m_inFolder.insert(app.path);
    }
    m_selected.removeIf(
        [&](const QString &path) { return m_inFolder.contains(path) || finder.index().ofPath(path) < 0; });
    Q_EMIT folderNameChanged();
    updateList();
}

void AppPicker::updateList()
{
    QList<PickerEntry> entries;
    const QSet<QString> selected(m_selected.cbegin(), m_selected.cend());
    for (const AppItem &app : appsMatching(m_choices, m_searchQuery))
        entries.append({app, selected.contains(app.path), m_inFolder.contains(app.path)});
    setItems(entries);
}

QVariant AppPicker::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const PickerEntry &entry = items()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.app.name;
    case PathRole:
        return entry.app.path;
    case IsSelectedRole:
        return entry.isSelected;
    case IsInFolderRole:
        return entry.isInFolder;
    default:
        return {};
    }
}

QHash<int, QByteArray> AppPicker::roleNames() const
{
    return {{NameRole, "name"},
            {PathRole, "path"},
            {IsSelectedRole, "isSelected"},
            {IsInFolderRole, "isInFolder"}};
}

} // namespace quillbay
