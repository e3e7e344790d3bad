#pragma once

#include <QHashFunctions>
#include <QString>
#include <QUrl>

namespace quillbay {

/// An installed application.
///
/// Identity is `url.path` alone: two records of one path with different names or categories are the same item,
/// for equality and for hashing. The two forms of the location are not interchangeable: `id()` serves identity,
/// the hidden set and the icon cache; `url.toString(QUrl::FullyEncoded)` is what lists and folders store.
struct AppItem
{
    QString name;
    QUrl url;         ///< File URL of the bundle, desktop entry or image.
    QString category; ///< Display name of the category; "Other" when nothing better is known.

    /// The path of `url`, percent-decoded, without a trailing slash.
    QString id() const { return url.path(QUrl::FullyDecoded); }

    friend bool operator==(const AppItem &a, const AppItem &b) { return a.id() == b.id(); }
    friend size_t qHash(const AppItem &item, size_t seed = 0) noexcept { return qHash(item.id(), seed); }
};

} // namespace quillbay
