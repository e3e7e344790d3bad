#pragma once

#include "app/ListSteps.h"

#include <QAbstractListModel>
#include <QList>

#include <algorithm>

namespace quillbay {

/// A list as a model for QML. A new list is compared with the old one and becomes a few removals, insertions,
/// a move and data changes, so that what stays on the screen keeps its state; where it would be many, one
/// removal and one insertion replace what lies between the common ends.
///
/// `listIdentity(item)` says which rows are the same, `looksSame(a, b)` whether such a row shows the same.
/// Thread: main thread.
template <typename Item>
class SteppedListModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    const QList<Item> &items() const { return m_items; }
    int count() const { return int(m_items.size()); }

    /// Whether the list looks the same as the one that is there.
    bool shows(const QList<Item> &items) const;
    /// Assigns the list in the smallest steps; one that looks the same changes nothing to be seen.
    void setItems(const QList<Item> &items);

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : count(); }

    /// Up to this many steps are sent one by one.
    static constexpr int mostSteps = 24;

protected:
    /// After a list of another length was assigned.
    virtual void announceCount() = 0;

private:
    void apply(const ListStep &step, const QList<Item> &items);
    void replaceMiddle(const QList<Item> &items);

    QList<Item> m_items;
};

template <typename Item>
bool SteppedListModel<Item>::shows(const QList<Item> &items) const
{
    return items.isSharedWith(m_items) ||
           std::equal(items.cbegin(), items.cend(), m_items.cbegin(), m_items.cend(),
                      [](const Item &a, const Item &b) { return looksSame(a, b); });
}

template <typename Item>
void SteppedListModel<Item>::setItems(const QList<Item> &items)
{
    if (shows(items)) {
        m_items = items; // equal to the eye, but keys and shared storage are the new list's
        return;
    }
    const int before = count();
    if (const auto steps = listSteps(m_items, items, mostSteps)) {
        for (const ListStep &step : *steps)
            apply(step, items);
    } else {
        replaceMiddle(items);
    }
    for (int row = 0; row < count(); ++row) {
        if (!looksSame(m_items.at(row), items.at(row))) {
            m_items[row] = items[row];
            Q_EMIT this->dataChanged(this->index(row), this->index(row));
        }
    }
    m_items = items;
    if (count() != before)
        announceCount();
}

template <typename Item>
void SteppedListModel<Item>::apply(const ListStep &step, const QList<Item> &items)
{
    const int last = step.row + step.count - 1;
    switch (step.kind) {
    case ListStep::Kind::Remove:
        this->beginRemoveRows({}, step.row, last);
        m_items.remove(step.row, step.count);
        this->endRemoveRows();
        break;
    case ListStep::Kind::Insert:
        this->beginInsertRows({}, step.row, last);
        m_items = m_items.mid(0, step.row) + items.mid(step.target, step.count) + m_items.mid(step.row);
        this->endInsertRows();
        break;
    case ListStep::Kind::Move: {
        this->beginMoveRows({}, step.row, last, {}, step.target);
        const auto begin = m_items.begin();
        if (step.target > step.row)
            std::rotate(begin + step.row, begin + last + 1, begin + step.target);
        else
            std::rotate(begin + step.target, begin + step.row, begin + last + 1);
        this->endMoveRows();
        break;
    }
    }
}

template <typename Item>
void SteppedListModel<Item>::replaceMiddle(const QList<Item> &items)
{
    const auto same = list_steps::sameItem<Item>;
    const auto fromStart =
        std::mismatch(m_items.cbegin(), m_items.cend(), items.cbegin(), items.cend(), same);
    const int head = int(fromStart.first - m_items.cbegin());
    const auto fromEnd =
        std::mismatch(m_items.crbegin(), m_items.crend(), items.crbegin(), items.crend(), same);
    const int tail =
        std::min(int(fromEnd.first - m_items.crbegin()), int(std::min(m_items.size(), items.size())) - head);
    const int gone = count() - head - tail;
    const int come = int(items.size()) - head - tail;
    if (gone > 0)
        apply({ListStep::Kind::Remove, head, gone, 0}, items);
    if (come > 0)
        apply({ListStep::Kind::Insert, head, come, head}, items);
}

} // namespace quillbay
