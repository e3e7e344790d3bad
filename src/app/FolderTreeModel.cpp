#include "app/FolderTreeModel.h"

#include "foundation/Uuid.h"
#include "library/AppFinder.h"

namespace quillbay {

namespace {

/// `above` holds the folders on the way down: what a stored list says of itself may go round in a circle.
void appendWithChildren(const AppFinder &finder, const AppFolder &folder, QSet<QUuid> above,
                        QList<FolderRow> &rows)
{
    rows.append({folder, int(above.size())});
    above.insert(folder.id);
    for (const AppFolder &child : finder.getChildFolders(folder.id)) {
        if (!above.contains(child.id))
            appendWithChildren(finder, child, above, rows);
    }
}

} // namespace

bool looksSame(const FolderRow &a, const FolderRow &b)
{
    return a.folder.id == b.folder.id && a.depth == b.depth && a.folder.name == b.folder.name &&
           a.folder.icon == b.folder.icon && a.folder.color == b.folder.color &&
           a.folder.isPinned == b.folder.isPinned;
}

QList<FolderRow> folderRows(const AppFinder &finder)
{
    QList<FolderRow> rows;
    for (const AppFolder &root : finder.getRootFolders())
        appendWithChildren(finder, root, {}, rows);
    return rows;
}

FolderTreeModel::FolderTreeModel(const AppFinder &finder, QObject *parent)
    : SteppedListModel(parent)
    , m_finder(finder)
{
    const auto update = [this] { setItems(folderRows(m_finder)); };
    connect(&m_finder, &AppFinder::foldersChanged, this, update);
    connect(&m_finder, &AppFinder::hiddenFolderIDsChanged, this, update);
    update();
}

QVariant FolderTreeModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto &[folder, depth] = items()[index.row()];
    switch (role) {
    case FolderIdRole:
        return uuidString(folder.id);
    case Qt::DisplayRole:
    case NameRole:
        return folder.name;
    case IconRole:
        return folder.icon;
    case ColorRole:
        return folder.color;
    case IsPinnedRole:
        return folder.isPinned;
    case DepthRole:
        return depth;
    case RootIndexRole:
        if (depth > 0)
            return -1;
        return int(std::count_if(items().cbegin(), items().cbegin() + index.row(),
                                 [](const FolderRow &row) { return row.depth == 0; }));
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderTreeModel::roleNames() const
{
    return {{FolderIdRole, "folderId"},  {NameRole, "name"},         {IconRole, "icon"},
            {ColorRole, "color"},        {IsPinnedRole, "isPinned"}, {DepthRole, "depth"},
            {RootIndexRole, "rootIndex"}};
}

} // namespace quillbay
