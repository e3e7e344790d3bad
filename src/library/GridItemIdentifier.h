#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>

namespace quillbay {

/// One cell of the unified grid: a user folder or a category.
class GridItemIdentifier
{
public:
    enum class Tag : quint8 { Folder = 0, Category = 1 };

    static GridItemIdentifier folder(const QUuid &id) { return GridItemIdentifier(id); }
    static GridItemIdentifier category(const QString &name) { return GridItemIdentifier(name); }

    /// Parses the string form. "folder:" demands a UUID behind it; behind "category:" everything is the name,
    /// which may be empty and may contain colons. The prefixes are case-sensitive; anything else gives
    /// nothing.
    static std::optional<GridItemIdentifier> fromString(QStringView text);

    Tag tag() const { return static_cast<Tag>(m_payload.index()); }
    /// Null unless the cell is a folder.
    QUuid folderID() const;
    /// Null unless the cell is a category.
    QString categoryName() const;

    /// "folder:" and the upper-case UUID, or "category:" and the name as it is. What the grid order stores.
    QString stringRepresentation() const;

    /// {"folder":{"id":"…"}} or {"category":{"name":"…"}}.
    QByteArray encoded() const;
    /// The reverse. The outer object must have exactly one key.
    static Decoded<GridItemIdentifier> decode(const QByteArray &json);

    friend bool operator==(const GridItemIdentifier &, const GridItemIdentifier &) = default;
    friend size_t qHash(const GridItemIdentifier &cell, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, quint8(cell.tag()), cell.folderID(), cell.categoryName());
    }

private:
    explicit GridItemIdentifier(const QUuid &id)
        : m_payload(id)
    {
    }
    explicit GridItemIdentifier(const QString &name)
        : m_payload(name)
    {
    }

    std::variant<QUuid, QString> m_payload;
};

} // namespace quillbay
