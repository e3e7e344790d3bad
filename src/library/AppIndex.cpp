#include "library/AppIndex.h"

#include <QUrl>

namespace quillbay {

AppIndex::AppIndex(const QList<AppItem> &apps)
{
    m_byPath.reserve(apps.size());
    m_byURL.reserve(apps.size());
    for (qsizetype i = apps.size() - 1; i >= 0; --i) {
        m_byPath.insert(apps[i].path, i);
        m_byURL.insert(apps[i].absoluteString(), i);
    }
}

qsizetype AppIndex::ofURL(const QString &url) const
{
    const auto found = m_byURL.constFind(url);
    if (found != m_byURL.cend())
        return *found;
    const QUrl parsed(url, QUrl::StrictMode);
    if (!parsed.isValid() || !parsed.isLocalFile())
        return -1;
    return m_byURL.value(fileURL(parsed.toLocalFile()), -1);
}

} // namespace quillbay
