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

} // namespace

std::optional<std::vector<ListStep>> listSteps(const QList<AppItem> &from, const QList<AppItem> &to, int most)
{
    QSet<QString> staying;
    if (!from.isEmpty() && !to.isEmpty()) {
        staying.reserve(to.size());
        for (const AppItem &item : to)
            staying.insert(item.path);
    }
    std::vector<ListStep> steps;
    int row = 0;
    qsizetype old = 0;
    qsizetype next = 0;
    while (old < from.size() || next < to.size()) {
        if (old < from.size() && next < to.size() && from[old].path == to[next].path) {
            ++old;
            ++next;
            ++row;
        } else if (old < from.size() && !staying.contains(from[old].path)) {
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

} // namespace quillbay
