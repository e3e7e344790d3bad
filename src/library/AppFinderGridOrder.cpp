#include "foundation/MoveRule.h"
#include "library/AppFinder.h"
#include "workspaces/WorkspaceManager.h"

namespace quillbay {

namespace {

QString orderKey(const WorkspaceManager &workspaces)
{
    return workspaces.key(QStringLiteral("unifiedGridOrder"));
}

} // namespace

QList<GridItemIdentifier> AppFinder::getUnifiedGridOrder() const
{
    const auto stored = m_surroundings.preferences.stringArray(orderKey(m_surroundings.workspaces));
    if (stored != m_parsedOrder.texts) {
        m_parsedOrder = {stored, {}};
        for (const QString &text : stored.value_or(QStringList())) {
            if (const auto cell = GridItemIdentifier::fromString(text))
                m_parsedOrder.cells.append(*cell);
        }
    }
    return m_parsedOrder.cells;
}

void AppFinder::reorderUnifiedItems(const QList<qsizetype> &from, qsizetype to,
                                    const QList<GridItemIdentifier> &currentItems)
{
    QList<GridItemIdentifier> cells = currentItems;
    moveElements(cells, from, to);
    QStringList texts;
    QHash<QUuid, qsizetype> places;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        texts.append(cells[i].stringRepresentation());
        if (cells[i].tag() == GridItemIdentifier::Tag::Folder)
            places.insert(cells[i].folderID(), i);
    }
    m_surroundings.preferences.setStringArray(orderKey(m_surroundings.workspaces), texts);
    QList<AppFolder> folders = m_folders;
    for (AppFolder &folder : folders)
        folder.sortOrder = places.value(folder.id, folder.sortOrder);
    publish(m_folders, std::move(folders), &AppFinder::foldersChanged);
    saveFolders();
    sendResult();
}

void AppFinder::updateUnifiedGridOrderFromCurrentState()
{
    // Stores nothing, on purpose: the sidebar's order and the grid's are the user's own, each for itself.
}

} // namespace quillbay
