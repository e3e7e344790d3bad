#include "app/CategoryListModel.h"

#include "app/AppListModel.h"

#include <algorithm>

namespace quillbay {

namespace {

/// Most groups stay as they are: they are compared before anything is copied.
void assign(AppListModel &model, const QList<AppItem> &apps, const QList<qsizetype> &members)
{
    const QList<AppItem> &shown = model.items();
    const bool isSame =
        std::equal(members.cbegin(), members.cend(), shown.cbegin(), shown.cend(),
                   [&apps](qsizetype member, const AppItem &item) { return looksSame(apps[member], item); });
    if (isSame)
        return;
    QList<AppItem> items;
    items.reserve(members.size());
    for (const qsizetype member : members)
        items.append(apps[member]);
    model.setItems(items);
}

} // namespace

void CategoryListModel::setApps(const QList<AppItem> &apps)
{
    QList<CategoryGroup> order;
    QHash<QString, QList<qsizetype>> grouped;
    for (qsizetype i = 0; i < apps.size(); ++i) {
        QList<qsizetype> &group = grouped[apps[i].category];
        if (group.isEmpty())
            order.append({apps[i].category});
        group.append(i);
    }
    for (const CategoryGroup &group : order) {
        AppListModel *&model = m_groups[group.name];
        if (!model)
            model = new AppListModel(this);
        assign(*model, apps, grouped[group.name]);
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
