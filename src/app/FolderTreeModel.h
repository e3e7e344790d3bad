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

private:
    const AppFinder &m_finder;
};

} // namespace quillbay
