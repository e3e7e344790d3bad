#include "app/CategoryListModel.h"

#include "app/AppListModel.h"

namespace quillbay {

void CategoryListModel::setApps(const QList<AppItem> &apps)
{
    QList<CategoryGroup> order;
    QHash<QString, QList<AppItem>> grouped;
    for (const AppItem &app : apps) {
        QList<AppItem> &group = grouped[app.category];
        if (group.isEmpty())
            order.append({app.category});
        group.append(app);
    }
    for (const CategoryGroup &group : order) {
        AppListModel *&model = m_groups[group.name];
        if (!model)
            model = new AppListModel(this);
        model->setItems(grouped.value(group.name));
    }
    setItems(order);
    m_groups.removeIf([&grouped](const QHash<QString, AppListModel *>::iterator group) {
        if (grouped.contains(group.key()))
            return false;
        group.value()->deleteLater();
        return true;
    });
}

QVariant CategoryListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const CategoryGroup &row = items()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return row.name;
    case AppsRole:
        return QVariant::fromValue(group(row.name));
    default:
        return {};
    }
}

QHash<int, QByteArray> CategoryListModel::roleNames() const
{
    return {{NameRole, "name"}, {AppsRole, "apps"}};
}

} // namespace quillbay
