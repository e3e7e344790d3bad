#pragma once

#include <QList>
#include <QSet>

#include <algorithm>
#include <optional>
#include <vector>

namespace quillbay {

/// One step from one list to another. Rows count in the list as the steps before it have left it.
struct ListStep
{
    enum class Kind { Remove, Insert, Move };
    Kind kind;
    int row;    ///< First row removed or moved, or row before which to insert.
    int count;  ///< At least 1.
    int target; ///< Insert: first index in the new list. Move: row before which, as counted before the move.

    friend bool operator==(const ListStep &, const ListStep &) = default;
};

/// The steps that turn `from` into `to`, as few as there are: removals, then at most one move of neighbours,
/// then insertions, each front to back. Nothing where more than `most` steps would be needed, where what
/// stays changes its order by more than one move, or where a list holds an identity twice.
///
/// Identity is what `listIdentity(item)` gives: a hashable value, or a reference to one.
template <typename Item>
std::optional<std::vector<ListStep>> listSteps(const QList<Item> &from, const QList<Item> &to, int most);

namespace list_steps {

/// Texts of one scan share their storage, which tells most of them equal without reading them.
inline bool same(const QString &a, const QString &b)
{
    return a.constData() == b.constData() || a == b;
}
template <typename Identity>
bool same(const Identity &a, const Identity &b)
{
    return a == b;
}
template <typename Item>
bool sameItem(const Item &a, const Item &b)
{
    return same(listIdentity(a), listIdentity(b));
}

/// Whether `part` is `whole` with something left out.
template <typename Item>
bool isPartOf(const QList<Item> &part, const QList<Item> &whole)
{
    qsizetype found = 0;
    for (qsizetype i = 0; i < whole.size() && found < part.size(); ++i)
        found += sameItem(whole[i], part[found]) ? 1 : 0;
    return found == part.size();
}

/// The removals that leave of `from` what `to` has, in the same order; `to` is a part of it.
template <typename Item>
void appendRemovals(std::vector<ListStep> &steps, const QList<Item> &from, const QList<Item> &to)
{
    int row = 0;
    for (const Item &item : from) {
        if (row < to.size() && sameItem(item, to[row]))
            ++row;
        else if (!steps.empty() && steps.back().kind == ListStep::Kind::Remove && steps.back().row == row)
            ++steps.back().count;
        else
            steps.push_back({ListStep::Kind::Remove, row, 1, 0});
    }
}

/// The insertions that fill `from` up to `to`; `from` is a part of it.
template <typename Item>
void appendInsertions(std::vector<ListStep> &steps, const QList<Item> &from, const QList<Item> &to)
{
    int old = 0;
    for (int row = 0; row < to.size(); ++row) {
        if (old < from.size() && sameItem(from[old], to[row]))
            ++old;
        else if (!steps.empty() && steps.back().kind == ListStep::Kind::Insert &&
                 steps.back().row + steps.back().count == row)
            ++steps.back().count;
        else
            steps.push_back({ListStep::Kind::Insert, row, 1, row});
    }
}

/// The one move between two orders of the same items; nothing where one does not do. Of the two neighbouring
/// runs that change places, the shorter one is moved.
template <typename Item>
std::optional<ListStep> oneMove(const QList<Item> &from, const QList<Item> &to)
{
    const auto ends = std::mismatch(from.cbegin(), from.cend(), to.cbegin(), sameItem<Item>);
    const int first = int(ends.first - from.cbegin());
    int last = int(from.size());
    while (last > first && sameItem(from[last - 1], to[last - 1]))
        --last;
    const auto begin = from.cbegin() + first;
    const auto end = from.cbegin() + last;
    const auto middle = std::find_if(begin, end, [&](const Item &item) { return sameItem(item, to[first]); });
    const auto target = to.cbegin() + first;
    if (!std::equal(middle, end, target, sameItem<Item>) ||
        !std::equal(begin, middle, target + (end - middle), sameItem<Item>))
        return std::nullopt;
    const int split = int(middle - from.cbegin());
    if (split - first < last - split)
        return ListStep{ListStep::Kind::Move, first, split - first, last};
    return ListStep{ListStep::Kind::Move, split, last - split, first};
}

/// The items of `list` whose identity is in `others`, in order; nothing where one is there twice.
template <typename Item, typename Identities>
std::optional<QList<Item>> common(const QList<Item> &list, const Identities &others)
{
    QList<Item> kept;
    Identities seen;
    seen.reserve(list.size());
    for (const Item &item : list) {
        const qsizetype before = seen.size();
        seen.insert(listIdentity(item));
        if (seen.size() == before)
            return std::nullopt;
        if (others.contains(listIdentity(item)))
            kept.append(item);
    }
    return kept;
}

template <typename Item>
auto identities(const QList<Item> &list)
{
    QSet<std::decay_t<decltype(listIdentity(list.first()))>> result;
    result.reserve(list.size());
    for (const Item &item : list)
        result.insert(listIdentity(item));
    return result;
}

template <typename Item>
void removeRows(QList<Item> &list, int row, int count)
{
    if (list.isDetached())
        list.remove(row, count);
    else // what goes need not be copied first
        list = list.mid(0, row) + list.mid(row + count);
}
inline void removeRows(std::vector<int> &list, int row, int count)
{
    list.erase(list.begin() + row, list.begin() + row + count);
}

/// Does a step to a list. What comes in is made by `make` of its index in the new list.
template <typename List, typename Make>
void apply(const ListStep &step, List &list, Make make)
{
    switch (step.kind) {
    case ListStep::Kind::Remove:
        removeRows(list, step.row, step.count);
        break;
    case ListStep::Kind::Insert:
        list.insert(list.begin() + step.row, step.count, make(step.target));
        for (int i = 1; i < step.count; ++i)
            list[decltype(list.size())(step.row + i)] = make(step.target + i);
        break;
    case ListStep::Kind::Move: {
        const auto row = list.begin() + step.row;
        const auto target = list.begin() + step.target;
        if (target > row)
            std::rotate(row, row + step.count, target);
        else
            std::rotate(target, row, row + step.count);
    }
    }
}

} // namespace list_steps

template <typename Item>
std::optional<std::vector<ListStep>> listSteps(const QList<Item> &from, const QList<Item> &to, int most)
{
    using namespace list_steps;
    std::vector<ListStep> steps;
    const auto result = [&]() -> std::optional<std::vector<ListStep>> {
        if (int(steps.size()) > most)
            return std::nullopt;
        return std::move(steps);
    };
    // A query that grows or shrinks by a letter: no need to look up what stays.
    if (isPartOf(to, from)) {
        appendRemovals(steps, from, to);
        return result();
    }
    if (isPartOf(from, to)) {
        appendInsertions(steps, from, to);
        return result();
    }
    const std::optional<QList<Item>> staying = common(from, identities(to));
    const std::optional<QList<Item>> stayed = common(to, identities(from));
    if (!staying || !stayed)
        return std::nullopt;
    appendRemovals(steps, from, *staying);
    if (!std::equal(staying->cbegin(), staying->cend(), stayed->cbegin(), sameItem<Item>)) {
        const std::optional<ListStep> move = oneMove(*staying, *stayed);
        if (!move)
            return std::nullopt;
        steps.push_back(*move);
    }
    appendInsertions(steps, *stayed, to);
    return result();
}

} // namespace quillbay
