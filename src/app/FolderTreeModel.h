#pragma once

#include "app/SteppedListModel.h"
#include "library/AppFolder.h"

namespace quillbay {

class AppFinder;

/// A folder where the sidebar shows it.
struct FolderRow
{
    AppFolder folder;
    int depth = 0; ///< 0 for a root folder.
};
inline const QUuid &listIdentity(const FolderRow &row)
{
    return row.folder.id;
}
/// Whether the two show the same; members do not show.
bool looksSame(const FolderRow &a, const FolderRow &b);

/// The folder tree as rows: each root folder, and below it its children in their order, and theirs. Hidden
/// folders are left out with all that is below them; so are folders whose parent is gone.
QList<FolderRow> folderRows(const AppFinder &finder);

/// The folder tree as the sidebar lists it. Follows the library. Thread: main thread.
class FolderTreeModel : public SteppedListModel<FolderRow>
{
    Q_OBJECT
    /// Said once more: the tools do not see through the template.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        FolderIdRole = Qt::UserRole + 1, ///< Upper-case identifier.
        NameRole,
        IconRole,  ///< Name of a system symbol.
        ColorRole, ///< Stored colour text.
        IsPinnedRole,
        DepthRole,
        RootIndexRole, ///< Place among the root folders; -1 for any other.
    };

    /// The library must outlive this object.
    explicit FolderTreeModel(const AppFinder &finder, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row of a folder, by its upper-case identifier; -1 where it is not listed.
    Q_INVOKABLE int rowOf(const QString &folder) const;
    /// The reverse; empty for a row that is not there.
    Q_INVOKABLE QString folderAt(int row) const;
    /// Place among the root folders; -1 for any other row.
    Q_INVOKABLE int rootIndexAt(int row) const;
    /// The row of a root folder by its place among them; the number of rows behind the last one.
    Q_INVOKABLE int rowOfRoot(int rootIndex) const;
    /// The place among the root folders whose beginning lies nearest to the upper edge of that row; of two as
    /// near, the first. Behind the last one, the number of root folders.
    Q_INVOKABLE int nearestRoot(int row) const;

private:
    const AppFinder &m_finder;
};

} // namespace quillbay
