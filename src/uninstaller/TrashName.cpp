#include "uninstaller/TrashName.h"

#include "foundation/Uuid.h"

namespace quillbay {

namespace {

constexpr qsizetype longestName = 255 - 10; // Of a file with a record.

// Where the dot of the extension is, or the name's end.
qsizetype extensionOf(const QByteArray &name)
{
    const qsizetype dot = name.lastIndexOf('.');
    const bool hasStem = dot > 0 && name.left(dot).count('.') < dot;
    return hasStem && dot + 1 < name.size() ? dot : name.size();
}

} // namespace

QByteArray uniqueTrashName(const QByteArray &name, const QUuid &id)
{
    const QByteArray mark = '_' + uuidString(id).left(8).toLatin1();
    qsizetype dot = extensionOf(name);
    if (name.size() - dot > longestName / 2)
        dot = name.size();
    const QByteArray extension = name.mid(dot);
    return name.left(qMin(dot, longestName - mark.size() - extension.size())) + mark + extension;
}

} // namespace quillbay
