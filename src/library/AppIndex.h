#pragma once

#include "library/AppItem.h"

#include <QHash>
#include <QList>
#include <QString>

namespace quillbay {

/// Where in a list of applications one stands, by path or by file URL. Of several with the same, the first.
///
/// A value, made once per list, off the main thread if need be; any thread may read it.
class AppIndex
{
public:
    AppIndex() = default;
    explicit AppIndex(const QList<AppItem> &apps);

    /// -1 where there is none.
    qsizetype ofPath(const QString &path) const { return m_byPath.value(path, -1); }
    /// By a stored URL, compared as a URL: other spellings of the same (an escape more or less, lower-case
    /// hexadecimal digits) find it too. -1 where there is none, or where the text is no URL.
    qsizetype ofURL(const QString &url) const;

private:
    QHash<QString, qsizetype> m_byPath;
    QHash<QString, qsizetype> m_byURL;
};

} // namespace quillbay
