#pragma once

#include "app/SteppedListModel.h"
#include "library/GridItemIdentifier.h"

namespace quillbay {

inline const GridItemIdentifier &listIdentity(const GridItemIdentifier &cell)
{
    return cell;
}
inline bool looksSame(const GridItemIdentifier &a, const GridItemIdentifier &b)
{
    return a == b;
}

/// The cells of the unified grid, folders and categories mixed. Thread: main thread.
class GridListModel : public SteppedListModel<GridItemIdentifier>
{
    Q_OBJECT

public:
    enum Role {
        IdentifierRole = Qt::UserRole + 1, ///< `stringRepresentation`.
        IsFolderRole,
        FolderIdRole,     ///< Upper-case identifier; empty for a category.
        CategoryNameRole, ///< Null for a folder.
    };

    using SteppedListModel::SteppedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quillbay
