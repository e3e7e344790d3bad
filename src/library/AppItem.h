#pragma once

#include <QByteArray>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QUrl>

#include <limits>

namespace quillbay {

/// The percent-encoded URL of a file: what `QUrl::fromLocalFile` gives, fully encoded, but several times as
/// fast for paths that need no escape.
QString fileURL(const QString &path);

/// An installed application.
///
/// Identity is the path alone: two records of one path with different names or categories are the same item,
/// for equality and for hashing. The two forms of the location are not interchangeable: the path serves
/// identity, the hidden set and the icon cache; `absoluteString()` is what lists and folders store.
struct AppItem
{
    QString name;     ///< Display name.
    QString path;     ///< Path of the bundle, desktop entry or image, as `url().path()` gives it.
    QString category; ///< Display name of the category; "Other" when nothing better is known.

    /// Derived from `name` once, by the scan: `memcmp` order of the keys is the locale's order of the names,
    /// and a query is contained in a name when its key (`searchKey(query)`) is contained in this one.
    QByteArray sortKey;
    QString searchKey;
    /// When the file was made and last written, as the scan found it: seconds since 1970, not a number where
    /// the file system does not say or the file could not be asked.
    double fileCreated = std::numeric_limits<double>::quiet_NaN();
    double fileModified = std::numeric_limits<double>::quiet_NaN();

    const QString &id() const { return path; }
    QUrl url() const { return QUrl::fromLocalFile(path); }
    /// The percent-encoded file URL.
    QString absoluteString() const { return fileURL(path); }

    friend bool operator==(const AppItem &a, const AppItem &b) { return a.path == b.path; }
    friend size_t qHash(const AppItem &item, size_t seed = 0) noexcept { return qHash(item.path, seed); }
};

/// Whether the two show the same: identity, name and category. Identity alone is not enough to leave a tile
/// as it is, since a desktop entry can be given another name where it stands.
bool looksSame(const AppItem &a, const AppItem &b);

} // namespace quillbay

Q_DECLARE_TYPEINFO(quillbay::AppItem, Q_RELOCATABLE_TYPE);
