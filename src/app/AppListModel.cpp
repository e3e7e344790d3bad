#include "app/AppListModel.h"

namespace quillbay {

QVariant AppListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AppItem &app = items()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return app.name;
    case PathRole:
        return app.path;
    case CategoryRole:
        return app.category;
    default:
        return {};
    }
}

QHash<int, QByteArray> AppListModel::roleNames() const
{
    return {{NameRole, "name"}, {PathRole, "path"}, {CategoryRole, "category"}};
}

} // namespace quillbay
