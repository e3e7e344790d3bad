#include "app/GridListModel.h"

#include "foundation/Uuid.h"

namespace quillbay {

QVariant GridListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const GridItemIdentifier &cell = items()[index.row()];
    const bool isFolder = cell.tag() == GridItemIdentifier::Tag::Folder;
    switch (role) {
    case Qt::DisplayRole:
    case IdentifierRole:
        return cell.stringRepresentation();
    case IsFolderRole:
        return isFolder;
    case FolderIdRole:
        return isFolder ? uuidString(cell.folderID()) : QString();
    case CategoryNameRole:
        return cell.categoryName();
    default:
        return {};
    }
}

QHash<int, QByteArray> GridListModel::roleNames() const
{
    return {{IdentifierRole, "identifier"},
            {IsFolderRole, "isFolder"},
            {FolderIdRole, "folderId"},
            {CategoryNameRole, "categoryName"}};
}

} // namespace quillbay
