#pragma once

#include <QList>
#include <QSet>

namespace quillbay {

/// Takes the elements at the offsets `from` out and puts them, in their order, before the element that stood
/// at offset `to` before the move; `to` equal to the count means the end. Offsets outside the list count for
/// nothing, and a `to` outside it for the nearer end.
template <typename Element>
void moveElements(QList<Element> &list, const QList<qsizetype> &from, qsizetype to)
{
    const QSet<qsizetype> taken(from.cbegin(), from.cend());
    QList<Element> before;
    QList<Element> moved;
    QList<Element> after;
    for (qsizetype i = 0; i < list.size(); ++i)
        (taken.contains(i) ? moved : i < to ? before : after).append(list.at(i));
    list = before + moved + after;
}

} // namespace quillbay
