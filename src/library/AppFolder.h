#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace quillbay {

/// A user folder: applications grouped by reference.
///
/// Equality compares `id` alone, while the hash, on purpose not in step with it, feeds every field: a folder
/// must not be a key of a hashed table across edits. Code that needs a stable key uses `id`.
struct AppFolder
{
    QUuid id;
    QString name;
    QStringList appURLs; ///< Members in the user's order, each an `AppItem::absoluteString()`.
    bool isPinned = false;
    QString icon;  ///< Name of a system symbol.
    QString color; ///< Stored colour text such as "#007AFF".
    std::optional<QUuid> parentFolderID;
    double createdAt = 0; ///< Seconds since 1 January 2001 00:00:00 UTC.
    std::int64_t sortOrder = 0;

    friend bool operator==(const AppFolder &a, const AppFolder &b) { return a.id == b.id; }
};

size_t qHash(const AppFolder &folder, size_t seed = 0) noexcept;

/// JSON of a folder list: an array of objects with the keys "id", "name", "appURLs", "isPinned", "icon",
/// "color", "parentFolderID" (left out when absent), "createdAt", "sortOrder", in that order. What is no
/// valid Unicode is replaced, and then `isExact` is false: decoding gives another list.
QByteArray encodeFolders(const QList<AppFolder> &folders, bool *isExact = nullptr);
/// The object of one folder.
QByteArray encodeFolder(const AppFolder &folder, bool *isExact);

/// The reverse. All keys but "parentFolderID" and "sortOrder" (0 when missing: older lists do not have it)
/// are required, unknown ones are ignored; one bad record fails the whole.
Decoded<QList<AppFolder>> decodeFolders(const QByteArray &json);

} // namespace quillbay
