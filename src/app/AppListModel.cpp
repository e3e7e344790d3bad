#include "app/AppListModel.h"

#include "app/ListSteps.h"

#include <algorithm>

namespace quillbay {

void AppListModel::setItems(const QList<AppItem> &items)
{
    const int before = count();
    if (const auto steps = listSteps(m_items, items, mostSteps)) {
        for (const ListStep &step : *steps) {
            if (step.kind == ListStep::Kind::Remove) {
                beginRemoveRows({}, step.row, step.row + step.count - 1);
                m_items.remove(step.row, step.count);
                endRemoveRows();
            } else {
                beginInsertRows({}, step.row, step.row + step.count - 1);
                m_items.insert(step.row, step.count, {});
                std::copy_n(items.cbegin() + step.source, step.count, m_items.begin() + step.row);
                endInsertRows();
            }
        }
    } else {
        replaceMiddle(items);
    }
    for (int row = 0; row < count(); ++row) {
        if (!looksSame(m_items.at(row), items.at(row))) {
            m_items[row] = items[row];
            Q_EMIT dataChanged(index(row), index(row), {NameRole, CategoryRole});
        }
    }
    // Equal to the eye, but keys and shared storage are the new list's.
    m_items = items;
    if (count() != before)
        Q_EMIT countChanged();
}

void AppListModel::replaceMiddle(const QList<AppItem> &items)
{
    const auto fromEnd = std::mismatch(m_items.crbegin(), m_items.crend(), items.crbegin(), items.crend());
    int tail = int(fromEnd.first - m_items.crbegin());
    const auto fromStart = std::mismatch(m_items.cbegin(), m_items.cend(), items.cbegin(), items.cend());
    const int head = int(fromStart.first - m_items.cbegin());
    tail = std::min(tail, int(std::min(m_items.size(), items.size())) - head);
    const int gone = count() - head - tail;
    const int come = int(items.size()) - head - tail;
    if (gone > 0) {
        beginRemoveRows({}, head, head + gone - 1);
        m_items.remove(head, gone);
        endRemoveRows();
    }
    if (come > 0) {
        beginInsertRows({}, head, head + come - 1);
        m_items = items;
        endInsertRows();
    }
}

int AppListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AppListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AppItem &app = m_items[index.row()];
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
