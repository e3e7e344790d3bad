#pragma once

#include "library/AppItem.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <vector>

namespace quillbay {

/// One query of the ranked search, its keys made once for many applications.
///
/// Three bands: names equal to the query, names that begin with it character by character, and the rest,
/// where the query is inside the name or the category. Each band is in the order of the names; equal names
/// keep their order. The items must have the keys that the scan makes.
class AppSearch
{
public:
    /// The query is not empty.
    explicit AppSearch(const QString &query);

    /// Whether the name or the category contains the query, case ignored.
    bool matches(const AppItem &app);
    /// Applications that all match, by rank.
    QList<AppItem> ranked(const std::vector<const AppItem *> &matching) const;

private:
    bool isPrefixOf(const AppItem &app) const;

    QString m_searchKey;
    QByteArray m_sortKey;
    QString m_lowered;
    bool m_isAscii;
    QHash<QString, bool> m_categories; ///< Whether each contains the query.
};

} // namespace quillbay
