#include "platform/linux/uninstalling/removal/TrashInfo.h"

#include <algorithm>

namespace quillbay::platform {

namespace {

bool isHexadecimal(char byte)
{
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

bool hasWholeEscapes(const QByteArray &text)
{
    for (qsizetype at = text.indexOf('%'); at >= 0; at = text.indexOf('%', at + 1)) {
        if (at + 2 >= text.size() || !isHexadecimal(text[at + 1]) || !isHexadecimal(text[at + 2]))
            return false;
    }
    return true;
}

} // namespace

QByteArray serialize(const TrashInfo &info)
{
    return "[Trash Info]\nPath=" + info.path.toPercentEncoding("/") +
           "\nDeletionDate=" + info.deleted.toLocalTime().toString(u"yyyy-MM-ddTHH:mm:ss").toLatin1() + '\n';
}

std::optional<TrashInfo> parseTrashInfo(const QByteArray &text)
{
    TrashInfo info;
    bool inGroup = false;
    bool hasDate = false;
    for (const QByteArray &line : text.split('\n')) {
        if (line.startsWith('[')) {
            inGroup = line.trimmed() == "[Trash Info]";
        } else if (inGroup && line.startsWith("Path=") && info.path.isEmpty()) {
            const QByteArray escaped = line.mid(5);
            if (!hasWholeEscapes(escaped))
                return std::nullopt;
            info.path = QByteArray::fromPercentEncoding(escaped);
        } else if (inGroup && line.startsWith("DeletionDate=") && !hasDate) {
            hasDate = true;
            info.deleted = QDateTime::fromString(QString::fromLatin1(line.mid(13).trimmed()), Qt::ISODate);
        }
    }
    if (info.path.isEmpty() || info.path.contains('\0'))
        return std::nullopt;
    return info;
}

} // namespace quillbay::platform
