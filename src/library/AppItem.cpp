#include "library/AppItem.h"

#include <algorithm>

namespace quillbay {

namespace {

bool needsNoEscape(QChar c)
{
    const ushort code = c.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           code == '/' || code == '.' || code == '-' || code == '_';
}

} // namespace

QString fileURL(const QString &path)
{
    // Two slashes in front would be a host.
    if (path.startsWith(QLatin1Char('/')) && !path.startsWith(QLatin1String("//")) &&
        std::all_of(path.cbegin(), path.cend(), needsNoEscape))
        return QLatin1String("file://") + path;
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

bool looksSame(const AppItem &a, const AppItem &b)
{
    return a.path == b.path && a.name == b.name && a.category == b.category;
}

} // namespace quillbay
