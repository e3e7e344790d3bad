#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QUuid>

namespace quillbay {

/// A named, coloured layout. Equality and hash look at every field.
struct Workspace
{
    QUuid id;
    QString name;
    QString icon;  ///< Name of a system symbol.
    QString color; ///< Stored colour text such as "#007AFF".

    friend bool operator==(const Workspace &, const Workspace &) = default;
    friend size_t qHash(const Workspace &workspace, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, workspace.id, workspace.name, workspace.icon, workspace.color);
    }
};

/// JSON of a list: an array of objects with the keys "id", "name", "icon", "color", in that order.
QByteArray encodeWorkspaces(const QList<Workspace> &workspaces);

/// The reverse. All four keys are required, unknown ones are ignored; one bad record fails the whole.
Decoded<QList<Workspace>> decodeWorkspaces(const QByteArray &json);

} // namespace quillbay
