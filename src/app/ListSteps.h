#pragma once

#include "library/AppItem.h"

#include <QList>

#include <optional>
#include <vector>

namespace quillbay {

/// One step from one list to another. Rows count in the list as the steps before it have left it.
struct ListStep
{
    enum class Kind { Remove, Insert };
    Kind kind;
    int row;    ///< First row removed, or row before which to insert.
    int count;  ///< At least 1.
    int source; ///< Insert: first index in the target list. Remove: unused.

    friend bool operator==(const ListStep &, const ListStep &) = default;
};

/// The removals and insertions, front to back, that turn `from` into `to` by identity; nothing where more
/// than `most` steps would be needed or where items that stay change their order. Both lists hold each
/// identity once.
std::optional<std::vector<ListStep>> listSteps(const QList<AppItem> &from, const QList<AppItem> &to,
                                               int most);

} // namespace quillbay
