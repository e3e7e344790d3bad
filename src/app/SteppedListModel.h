#pragma once

#include "app/CountedListModel.h"
#include "app/ListSteps.h"

#include <QList>

#include <algorithm>
#include <numeric>
#include <vector>

namespace quillbay {

/// A list as a model for QML. A new list is compared with the old one and becomes a few removals, insertions,
/// a move and data changes, so that what stays on the screen keeps its state; where it would be many, one
/// removal and one insertion replace what lies between the common ends.
///
/// `listIdentity(item)` says which rows are the same, `looksSame(a, b)` whether such a row shows the same.
/// Thread: main thread.
template <typename Item>
class SteppedListModel : public CountedListModel
{
public:
    using CountedListModel::CountedListModel;

    const QList<Item> &items() const { return m_items; }

    /// Whether the list looks the same as the one that is there.
    bool shows(const QList<Item> &items) const;
    /// Assigns the list in the smallest steps; one that looks the same changes nothing to be seen.
    void setItems(const QList<Item> &items);

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_items.size());
    }

    /// Up to this many steps are sent one by one.
    static constexpr int mostSteps = 24;

protected:
    /// From now on rows that take the place of others are the same rows looking otherwise: for views whose
    /// rows are costly to make. Rows that come or go without others in their place do so as before.
    void setReplacesInPlace() { m_replacesInPlace = true; }

private:
    void begin(const ListStep &step);
    void end(const ListStep &step);
    std::vector<ListStep> replacementOfMiddle(const QList<Item> &items) const;
    void replaceInPlace(std::vector<ListStep> &steps, const QList<Item> &items);
    /// Rows of the new list that were there before and looked otherwise.
    std::vector<int> rowsOfNewLook(const std::vector<ListStep> &steps, const QList<Item> &items) const;

    QList<Item> m_items;
    bool m_replacesInPlace = false;
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
    const int before = this->count();
    const auto found = listSteps(m_items, items, mostSteps);
    std::vector<ListStep> steps = found ? *found : replacementOfMiddle(items);
    if (m_replacesInPlace)
        replaceInPlace(steps, items);
    const std::vector<int> newLooks = rowsOfNewLook(steps, items);
    for (size_t i = 0; i < steps.size(); ++i) {
        begin(steps[i]);
        // The last step ends at the new list: a single one copies nothing.
        if (i + 1 == steps.size())
            m_items = items;
        else
            list_steps::apply(steps[i], m_items, [&items](int target) { return items[target]; });
        end(steps[i]);
    }
    m_items = items;
    for (const int row : newLooks)
        Q_EMIT this->dataChanged(this->index(row), this->index(row));
    if (this->count() != before)
        Q_EMIT this->countChanged();
}

template <typename Item>
std::vector<int> SteppedListModel<Item>::rowsOfNewLook(const std::vector<ListStep> &steps,
                                                       const QList<Item> &items) const
{
    std::vector<int> origins(size_t(m_items.size())); // the row of the old list, or -1
    std::iota(origins.begin(), origins.end(), 0);
    for (const ListStep &step : steps)
        list_steps::apply(step, origins, [](int) { return -1; });
    std::vector<int> rows;
    for (int row = 0; row < int(items.size()); ++row) {
        const int origin = origins[size_t(row)];
        if (origin >= 0 && !looksSame(m_items[origin], items[row]))
            rows.push_back(row);
    }
    return rows;
}

template <typename Item>
void SteppedListModel<Item>::replaceInPlace(std::vector<ListStep> &steps, const QList<Item> &items)
{
    if (steps.size() != 2 || steps[0].kind != ListStep::Kind::Remove ||
        steps[1].kind != ListStep::Kind::Insert || steps[0].row != steps[1].row)
        return;
    const int first = steps[0].row;
    const int kept = std::min(steps[0].count, steps[1].count);
    std::copy_n(items.cbegin() + steps[1].target, kept, m_items.begin() + first);
    Q_EMIT this->dataChanged(this->index(first), this->index(first + kept - 1));
    for (ListStep &step : steps) {
        step.row += kept;
        step.count -= kept;
        step.target += kept;
    }
    std::erase_if(steps, [](const ListStep &step) { return step.count == 0; });
}

template <typename Item>
void SteppedListModel<Item>::begin(const ListStep &step)
{
    const int last = step.row + step.count - 1;
    switch (step.kind) {
    case ListStep::Kind::Remove:
        return this->beginRemoveRows({}, step.row, last);
    case ListStep::Kind::Insert:
        return this->beginInsertRows({}, step.row, last);
    case ListStep::Kind::Move:
        this->beginMoveRows({}, step.row, last, {}, step.target);
    }
}

template <typename Item>
void SteppedListModel<Item>::end(const ListStep &step)
{
    switch (step.kind) {
    case ListStep::Kind::Remove:
        return this->endRemoveRows();
    case ListStep::Kind::Insert:
        return this->endInsertRows();
    case ListStep::Kind::Move:
        this->endMoveRows();
    }
}

template <typename Item>
std::vector<ListStep> SteppedListModel<Item>::replacementOfMiddle(const QList<Item> &items) const
{
    const auto same = list_steps::sameItem<Item>;
    const auto fromStart =
        std::mismatch(m_items.cbegin(), m_items.cend(), items.cbegin(), items.cend(), same);
    const int head = int(fromStart.first - m_items.cbegin());
    const auto fromEnd =
        std::mismatch(m_items.crbegin(), m_items.crend(), items.crbegin(), items.crend(), same);
    const int tail =
        std::min(int(fromEnd.first - m_items.crbegin()), int(std::min(m_items.size(), items.size())) - head);
    const int gone = int(m_items.size()) - head - tail;
    const int come = int(items.size()) - head - tail;
    std::vector<ListStep> steps;
    if (gone > 0)
        steps.push_back({ListStep::Kind::Remove, head, gone, 0});
    if (come > 0)
        steps.push_back({ListStep::Kind::Insert, head, come, head});
    return steps;
}

} // namespace quillbay
