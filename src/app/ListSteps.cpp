#include "app/ListSteps.h"

#include <QSet>

namespace quillbay {

namespace {

/// Extends the last step where the new one continues it.
void append(std::vector<ListStep> &steps, ListStep::Kind kind, int row, int source)
{
    if (!steps.empty()) {
        ListStep &last = steps.back();
        const bool continues =
            last.kind == kind &&
            (kind == ListStep::Kind::Remove ? last.row == row : last.row + last.count == row);
        if (continues) {
            ++last.count;
            return;
        }
    }
    steps.push_back({kind, row, 1, source});
}

/// Paths of one scan share their storage, which tells most of them equal without reading them.
bool same(const AppItem &a, const AppItem &b)
{
    return a.path.constData() == b.path.constData() || a.path == b.path;
}

/// Whether `part` is `whole` with something left out.
bool isPartOf(const QList<AppItem> &part, const QList<AppItem> &whole)
{
    qsizetype found = 0;
    for (qsizetype i = 0; i < whole.size() && found < part.size(); ++i)
        found += same(whole[i], part[found]) ? 1 : 0;
    return found == part.size();
}

/// Walks both lists; `leaves` tells of an item of `from` that is not the next of `to` whether it goes.
template <typename Leaves>
std::optional<std::vector<ListStep>> walk(const QList<AppItem> &from, const QList<AppItem> &to, int most,
                                          Leaves leaves)
{
    std::vector<ListStep> steps;
    int row = 0;
    qsizetype old = 0;
    qsizetype next = 0;
    while (old < from.size() || next < to.size()) {
        if (old < from.size() && next < to.size() && same(from[old], to[next])) {
            ++old;
            ++next;
            ++row;
        } else if (old < from.size() && leaves(from[old])) {
            append(steps, ListStep::Kind::Remove, row, 0);
            ++old;
        } else if (next < to.size()) {
            append(steps, ListStep::Kind::Insert, row, int(next));
            ++next;
            ++row;
        } else {
            return std::nullopt;
        }
        if (int(steps.size()) > most)
            return std::nullopt;
    }
    return steps;
}

} // namespace

std::optional<std::vector<ListStep>> listSteps(const QList<AppItem> &from, const QList<AppItem> &to, int most)
{
    // A query that grows or shrinks by a letter: no need to look up what stays.
    if (isPartOf(to, from))
        return walk(from, to, most, [](const AppItem &) { return true; });
    if (isPartOf(from, to))
        return walk(from, to, most, [](const AppItem &) { return false; });
    QSet<QString> staying;
    staying.reserve(to.size());
    for (const AppItem &item : to)
        staying.insert(item.path);
    return walk(from, to, most, [&staying](const AppItem &item) { return !staying.contains(item.path); });
}

} // namespace quillbay
