#include "app/HiddenCards.h"

#include "app/QuillbayViewModel.h"

namespace quillbay {

HiddenCards::HiddenCards(const QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent)
    : CardListModel(contents, parent)
    , m_viewModel(viewModel)
{
    const AppFinder *finder = m_viewModel.appFinder();
    connect(finder, &AppFinder::foldersChanged, this, &HiddenCards::scheduleUpdate);
    connect(finder, &AppFinder::hiddenFolderIDsChanged, this, &HiddenCards::scheduleUpdate);
    connect(&m_viewModel, &SecurityLock::isHiddenUnlockedChanged, this, &HiddenCards::update);
    connect(&m_viewModel, &SecurityLock::securityChanged, this, &HiddenCards::update);
    update();
}

void HiddenCards::update()
{
    QList<Card> cards;
    const AppFinder &finder = *m_viewModel.appFinder();
    const QSet<QUuid> listed = m_viewModel.isLocked() ? QSet<QUuid>() : finder.hiddenFolderIDs();
    for (const AppFolder &folder : finder.folders()) {
        if (listed.contains(folder.id))
            cards.append(Card::ofFolder(folder));
    }
    setItems(cards);
}

} // namespace quillbay
