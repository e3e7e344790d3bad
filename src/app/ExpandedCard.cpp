#include "app/ExpandedCard.h"

#include "app/FolderContents.h"
#include "app/QuillbayViewModel.h"

namespace quillbay {

ExpandedCard::ExpandedCard(QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_contents(contents)
{
    connect(m_viewModel.appFinder(), &AppFinder::foldersChanged, this, &ExpandedCard::update);
    connect(m_viewModel.appFinder(), &AppFinder::hiddenAppPathsChanged, this, &ExpandedCard::forget);
    // From the event loop: a category's applications go after its row.
    const CategoryListModel *categories = m_viewModel.groupedAppsByCategory();
    connect(categories, &QAbstractItemModel::rowsRemoved, this, &ExpandedCard::update, Qt::QueuedConnection);
    connect(categories, &QAbstractItemModel::rowsInserted, this, &ExpandedCard::update, Qt::QueuedConnection);
}

void ExpandedCard::expandFolder(const QString &folderId)
{
    m_expandedFolderID = folderId;
    update();
}

void ExpandedCard::expandCategory(const QString &name)
{
    if (m_expandedCategoryName.isNull())
        m_viewModel.groupedAppsByCategory()->follow();
    m_expandedCategoryName = name.isNull() ? QStringLiteral("") : name;
    update();
}

void ExpandedCard::close()
{
    if (!m_folderId.isEmpty() || m_expandedCategoryName.isNull()) {
        m_expandedFolderID.clear();
    } else {
        m_expandedCategoryName = QString();
        m_viewModel.groupedAppsByCategory()->unfollow();
    }
    update();
}

void ExpandedCard::update()
{
    AppListModel *apps = m_expandedFolderID.isEmpty() ? nullptr : m_contents.apps(m_expandedFolderID);
    const QString folderId = apps ? m_expandedFolderID : QString();
    QString title = apps ? m_contents.name(folderId) : QString();
    if (!apps && !m_expandedCategoryName.isNull()) {
        apps = m_viewModel.groupedAppsByCategory()->group(m_expandedCategoryName);
        title = apps ? m_expandedCategoryName : QString();
    }
    if (apps == m_source && title == m_title && folderId == m_folderId)
        return;
    show(apps);
    if (!apps && !m_folderId.isEmpty())
        m_apps.setItems({});
    m_title = title;
    m_folderId = folderId;
    Q_EMIT changed();
}

void ExpandedCard::forget()
{
    if (!m_source)
        m_apps.setItems({});
}

void ExpandedCard::show(AppListModel *source)
{
    if (source == m_source)
        return;
    if (m_source)
        disconnect(m_source, nullptr, this, nullptr);
    m_source = source;
    if (!source)
        return;
    const auto follow = [this, source] { m_apps.setItems(source->items()); };
    connect(source, &AppListModel::rowsInserted, this, follow);
    connect(source, &AppListModel::rowsRemoved, this, follow);
    connect(source, &AppListModel::rowsMoved, this, follow);
    connect(source, &AppListModel::dataChanged, this, follow);
    follow();
}

} // namespace quillbay
