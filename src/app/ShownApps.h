#pragma once

#include "library/AppItem.h"
#include "library/AppSortOption.h"

#include <QList>
#include <QSet>
#include <QString>

namespace quillbay {

class AppFinder;
class SidebarSelection;

/// The applications whose name contains the query, without regard to case in the locale's way, in their
/// order; all of them for an empty query.
QList<AppItem> appsMatching(const QList<AppItem> &apps, const QString &query);

/// Those whose path is not in `hidden`; the same list, shared, where none is.
QList<AppItem> withoutHidden(const QList<AppItem> &apps, const QSet<QString> &hidden);

/// What the grid lists for a selection and a query, from the library as it stands.
///
/// The applications that are not hidden, sorted, are kept until one of the things they are made of changes:
/// a key or an announcement then costs a pass over them instead of a sort. Thread: main thread.
class ShownApps
{
public:
    /// The library must outlive this object.
    explicit ShownApps(const AppFinder &finder);

    /// `selection` may be null: then as for all applications.
    QList<AppItem> list(const SidebarSelection *selection, const QString &query) const;

private:
    QList<AppItem> selected(const SidebarSelection &selection) const;

    const QList<AppItem> &sortedVisible() const;

    const AppFinder &m_finder;
    // What the kept lists were made of, and they.
    mutable QList<AppItem> m_apps;
    mutable QList<AppItem> m_recents;
    mutable AppSortOption m_option = AppSortOption::nameAscending;
    mutable QSet<QString> m_hidden;
    mutable QList<AppItem> m_sorted;
    mutable QList<AppItem> m_visible;
};

} // namespace quillbay
