#include "library/AppSearch.h"

#include "foundation/CollationKey.h"
#include "library/SearchKey.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace quillbay {

namespace {

constexpr char16_t firstCombining = 0x300;

QString lowered(const QString &text)
{
    return text.toLower().normalized(QString::NormalizationForm_C);
}

bool isAscii(QStringView text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c < QChar(0x80); });
}

/// Whether a character of `text` certainly begins at `position`: no accent or the like stands there.
bool isPlainStart(QStringView text, qsizetype position)
{
    return position == text.size() || (text[position] < firstCombining && text[position] != u'\n');
}

bool beginsWithCharactersOf(const QString &text, const QString &start)
{
    if (!text.startsWith(start))
        return false;
    if (isPlainStart(text, start.size()))
        return true;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(start.size());
    return finder.isAtBoundary();
}

} // namespace

AppSearch::AppSearch(const QString &query)
    : m_searchKey(searchKey(query))
    , m_sortKey(CollationKey::Maker()(query))
    , m_lowered(lowered(query))
    , m_isAscii(isAscii(m_lowered))
{
}

bool AppSearch::matches(const AppItem &app)
{
    if (app.searchKey.contains(m_searchKey))
        return true;
    auto known = m_categories.constFind(app.category);
    if (known == m_categories.cend())
        known = m_categories.insert(app.category, searchKey(app.category).contains(m_searchKey));
    return *known;
}

bool AppSearch::isPrefixOf(const AppItem &app) const
{
    if (!app.searchKey.startsWith(m_searchKey))
        return false;
    // Most names and queries need no work on a copy.
    const QStringView head = QStringView(app.name).left(m_lowered.size());
    if (m_isAscii && isAscii(head) && isPlainStart(app.name, head.size()))
        return head.compare(m_lowered, Qt::CaseInsensitive) == 0;
    return beginsWithCharactersOf(lowered(app.name), m_lowered);
}

QList<AppItem> AppSearch::ranked(const std::vector<const AppItem *> &matching) const
{
    struct Band
    {
        std::vector<QByteArrayView> keys;
        std::vector<const AppItem *> apps;
    };
    Band exact;
    Band prefix;
    Band inside;
    for (const AppItem *app : matching) {
        Band &band = app->sortKey == m_sortKey ? exact : isPrefixOf(*app) ? prefix : inside;
        band.keys.emplace_back(app->sortKey);
        band.apps.push_back(app);
    }
    QList<AppItem> result;
    result.reserve(qsizetype(matching.size()));
    for (const Band *band : {&exact, &prefix, &inside}) {
        for (const size_t i : CollationKey::sortedOrder(band->keys))
            result.append(*band->apps[i]);
    }
    return result;
}

} // namespace quillbay
