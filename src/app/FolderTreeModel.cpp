#include "app/FolderTreeModel.h"

#include "foundation/Uuid.h"
#include "library/AppFinder.h"

#include <algorithm>
#include <cstdlib>

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
        return rootIndexAt(index.row());
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

int FolderTreeModel::rowOf(const QString &folder) const
{
    const std::optional<QUuid> id = uuidFromString(folder);
    const auto row = std::find_if(items().cbegin(), items().cend(),
                                  [&id](const FolderRow &entry) { return entry.folder.id == id; });
    return row == items().cend() ? -1 : int(row - items().cbegin());
}

QString FolderTreeModel::folderAt(int row) const
{
    return row >= 0 && row < count() ? uuidString(items()[row].folder.id) : QString();
}

int FolderTreeModel::rootIndexAt(int row) const
{
    if (row < 0 || row >= count() || items()[row].depth > 0)
        return -1;
    return int(std::count_if(items().cbegin(), items().cbegin() + row,
                             [](const FolderRow &entry) { return entry.depth == 0; }));
}

int FolderTreeModel::rowOfRoot(int rootIndex) const
{
    int row = 0;
    for (; row < count(); ++row) {
        if (items()[row].depth == 0 && rootIndex-- == 0)
            break;
    }
    return row;
}

int FolderTreeModel::nearestRoot(int row) const
{
    int nearest = 0;
    int distance = std::abs(row);
    for (int root = 1, start = 0; start < count(); ++root) {
        start = rowOfRoot(root);
        if (std::abs(row - start) < distance) {
            nearest = root;
            distance = std::abs(row - start);
        }
    }
    return nearest;
}

} // namespace quillbay
