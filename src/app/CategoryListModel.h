#pragma once

#include "app/SteppedListModel.h"
#include "library/AppItem.h"

#include <QHash>
#include <QList>
#include <QString>

namespace quillbay {

class AppListModel;

/// One category of a list, by name.
struct CategoryGroup
{
    QString name;
};
inline const QString &listIdentity(const CategoryGroup &group)
{
    return group.name;
}
inline bool looksSame(const CategoryGroup &a, const CategoryGroup &b)
{
    return a.name == b.name;
}

/// A list of applications by category: a row for each category, in the order in which they come up in the
/// list, with a model of its applications that lives as long as the category has any.
///
/// A new list is grouped at once while someone follows, else when a `group` is asked for: a grid without
/// cards costs no grouping per key.
/// Thread: main thread.
class CategoryListModel : public SteppedListModel<CategoryGroup>
{
    Q_OBJECT

public:
    enum Role { NameRole = Qt::UserRole + 1, AppsRole };

    using SteppedListModel::SteppedListModel;

    /// Groups the list; each group in its order.
    void setApps(const QList<AppItem> &apps);

    /// The applications of a category; null where the list has none. Owned by this object, and ended from
    /// the event loop once the category is gone.
    Q_INVOKABLE quillbay::AppListModel *group(const QString &category);

    /// Each `follow` takes one `unfollow`.
    Q_INVOKABLE void follow();
    Q_INVOKABLE void unfollow();

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void update();
    void updateIfStale();

    QList<AppItem> m_apps;
    QHash<QString, AppListModel *> m_groups;
    int m_followers = 0;
    bool m_isStale = false;
};

} // namespace quillbay
