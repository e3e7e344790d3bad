#include "app/UnifiedCards.h"

#include "app/QuillbayViewModel.h"

namespace quillbay {

UnifiedCards::UnifiedCards(QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent)
    : CardListModel(contents, parent)
    , m_viewModel(viewModel)
{
    const auto leaveOrUpdate = [this] {
        leaveIfUnasked();
        if (isAskedFor())
            scheduleUpdate();
    };
    const AppFinder *finder = m_viewModel.appFinder();
    connect(&m_viewModel, &QuillbayViewModel::selectionChanged, this, leaveOrUpdate);
    connect(&m_viewModel, &QuillbayViewModel::searchQueryChanged, this, leaveOrUpdate);
    connect(finder, &AppFinder::allAppsSortOptionChanged, this, leaveOrUpdate);

    const auto follow = [this] {
        if (m_isShown)
            scheduleUpdate();
    };
    connect(finder, &AppFinder::foldersChanged, this, follow);
    for (const QAbstractItemModel *source :
         {static_cast<const QAbstractItemModel *>(m_viewModel.unifiedGridItems()),
          static_cast<const QAbstractItemModel *>(m_viewModel.groupedAppsByCategory())}) {
        connect(source, &QAbstractItemModel::rowsInserted, this, follow);
        connect(source, &QAbstractItemModel::rowsRemoved, this, follow);
        connect(source, &QAbstractItemModel::rowsMoved, this, follow);
    }
    update();
}

bool UnifiedCards::isAskedFor() const
{
    return m_viewModel.selection() == SidebarSelection() &&
           m_viewModel.appFinder()->allAppsSortOption() == AppSortOption::category &&
           m_viewModel.searchQuery().isEmpty();
}

void UnifiedCards::leaveIfUnasked()
{
    if (!m_isShown || isAskedFor())
        return;
    m_isShown = false;
    m_viewModel.groupedAppsByCategory()->unfollow();
    Q_EMIT isShownChanged();
}

void UnifiedCards::update()
{
    if (!isAskedFor())
        return;
    if (!m_isShown)
        m_viewModel.groupedAppsByCategory()->follow();
    setItems(cards());
    if (!m_isShown) {
        m_isShown = true;
        Q_EMIT isShownChanged();
    }
}

QList<Card> UnifiedCards::cards() const
{
    QHash<QUuid, const AppFolder *> folders;
    for (const AppFolder &folder : m_viewModel.appFinder()->folders())
        folders.insert(folder.id, &folder);
    QList<Card> cards{{}};
    for (const GridItemIdentifier &cell : m_viewModel.unifiedGridItems()->items()) {
        if (cell.tag() == GridItemIdentifier::Tag::Folder) {
            if (const AppFolder *folder = folders.value(cell.folderID()))
                cards.append(Card::ofFolder(*folder));
        } else if (AppListModel *group = m_viewModel.groupedAppsByCategory()->group(cell.categoryName())) {
            cards.append(Card::ofCategory(cell.categoryName(), group));
        }
    }
    return cards;
}

} // namespace quillbay
