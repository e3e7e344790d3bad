#include "app/CardListModel.h"

#include "app/FolderContents.h"
#include "foundation/Uuid.h"

#include <utility>

namespace quillbay {

Card Card::ofFolder(const AppFolder &folder)
{
    return {
        GridItemIdentifier::folder(folder.id).stringRepresentation(), uuidString(folder.id), folder.name, {}};
}

Card Card::ofCategory(const QString &name, AppListModel *group)
{
    return {GridItemIdentifier::category(name).stringRepresentation(), {}, name, group};
}

CardListModel::CardListModel(FolderContents &contents, QObject *parent)
    : SteppedListModel(parent)
    , m_contents(contents)
{
    setReplacesInPlace();
}

void CardListModel::scheduleUpdate()
{
    if (std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            update();
        },
        Qt::QueuedConnection);
}

QVariant CardListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Card &card = items()[index.row()];
    const bool isFolder = !card.folderId.isEmpty();
    switch (role) {
    case KindRole:
        return isFolder                    ? QStringLiteral("folder")
               : card.identifier.isEmpty() ? QStringLiteral("add")
                                           : QStringLiteral("category");
    case IdentifierRole:
        return card.identifier;
    case FolderIdRole:
        return card.folderId;
    case Qt::DisplayRole:
    case NameRole:
        return card.name;
    case AppsRole:
        return QVariant::fromValue(isFolder ? m_contents.apps(card.folderId) : card.group.data());
    default:
        return {};
    }
}

QHash<int, QByteArray> CardListModel::roleNames() const
{
    return {{KindRole, "kind"},
            {IdentifierRole, "identifier"},
            {FolderIdRole, "folderId"},
            {NameRole, "name"},
            {AppsRole, "apps"}};
}

} // namespace quillbay
