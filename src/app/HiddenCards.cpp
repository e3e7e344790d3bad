#include "app/HiddenCards.h"

#include "library/AppFinder.h"

namespace quillbay {

HiddenCards::HiddenCards(const AppFinder &finder, FolderContents &contents, QObject *parent)
    : CardListModel(contents, parent)
    , m_finder(finder)
{
    connect(&m_finder, &AppFinder::foldersChanged, this, &HiddenCards::scheduleUpdate);
    connect(&m_finder, &AppFinder::hiddenFolderIDsChanged, this, &HiddenCards::scheduleUpdate);
    update();
}

void HiddenCards::update()
{
    QList<Card> cards;
    for (const AppFolder &folder : m_finder.folders()) {
        if (m_finder.hiddenFolderIDs().contains(folder.id))
            cards.append(Card::ofFolder(folder));
    }
    setItems(cards);
}

} // namespace quillbay
