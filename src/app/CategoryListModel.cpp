#include "app/CategoryListModel.h"

#include "app/AppListModel.h"

#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

struct Group
{
    QString name;
    QList<qsizetype> members; ///< Places in the list.
};

/// By category, in the order in which they come up.
std::vector<Group> grouped(const QList<AppItem> &apps)
{
    std::vector<Group> groups;
    QHash<QString, size_t> places;
    QHash<const QChar *, size_t> known; // most categories of a scan share their storage
    for (qsizetype i = 0; i < apps.size(); ++i) {
        const QString &category = apps[i].category;
        auto place = known.constFind(category.constData());
        if (place == known.cend()) {
            auto group = places.constFind(category);
            if (group == places.cend()) {
                group = places.insert(category, groups.size());
                groups.push_back({category, {}});
            }
            place = known.insert(category.constData(), *group);
        }
        groups[*place].members.append(i);
    }
    return groups;
}

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
    m_apps = apps;
    m_isStale = true;
    if (m_followers > 0)
        updateIfStale();
}

AppListModel *CategoryListModel::group(const QString &category)
{
    updateIfStale();
    return m_groups.value(category);
}

void CategoryListModel::follow()
{
    ++m_followers;
    updateIfStale();
}

void CategoryListModel::unfollow()
{
    Q_ASSERT(m_followers > 0);
    --m_followers;
}

void CategoryListModel::updateIfStale()
{
    if (std::exchange(m_isStale, false))
        update();
}

void CategoryListModel::update()
{
    QList<CategoryGroup> order;
    QSet<QString> names;
    for (const Group &group : grouped(m_apps)) {
        AppListModel *&model = m_groups[group.name];
        if (!model)
            model = new AppListModel(this);
        assign(*model, m_apps, group.members);
        order.append({group.name});
        names.insert(group.name);
    }
    setItems(order);
    m_groups.removeIf([&names](const QHash<QString, AppListModel *>::iterator group) {
        if (names.contains(group.key()))
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
        return QVariant::fromValue(m_groups.value(row.name));
    default:
        return {};
    }
}

QHash<int, QByteArray> CategoryListModel::roleNames() const
{
    return {{NameRole, "name"}, {AppsRole, "apps"}};
}

} // namespace quillbay
