#include "platform/linux/documents/XbelRecord.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QUrl>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillbay::platform {

namespace {

double seconds(QStringView text)
{
    QDateTime time = QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
    if (!time.isValid())
        return 0;
    if (time.timeSpec() == Qt::LocalTime) // no zone given
        time.setTimeSpec(Qt::UTC);
    return double(time.toMSecsSinceEpoch()) / 1000;
}

/// Null where it is no file of this machine.
QString localPath(QStringView href)
{
    const QUrl url(href.toString(), QUrl::StrictMode);
    if (!url.isValid() || !url.isLocalFile() ||
        !(url.host().isEmpty() || url.host() == QLatin1String("localhost")))
        return {};
    const QString path = url.path(QUrl::FullyDecoded);
    return path.startsWith(u'/') && !path.contains(QChar(u'\0')) ? QDir::cleanPath(path) : QString();
}

class Reader
{
public:
    explicit Reader(const QByteArray &text)
        : m_xml(text)
    {
        m_xml.setEntityExpansionLimit(0);
    }

    QList<XbelBookmark> read()
    {
        while (!m_xml.atEnd()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::DTD:
                if (!m_xml.entityDeclarations().isEmpty())
                    return {};
                break;
            case QXmlStreamReader::StartElement:
                if (++m_depth == 1 && m_xml.name() != u"xbel")
                    return {};
                begin();
                break;
            case QXmlStreamReader::EndElement:
                end();
                --m_depth;
                break;
            default:
                break;
            }
        }
        return m_xml.hasError() ? QList<XbelBookmark>() : std::move(m_bookmarks);
    }

private:
    void begin()
    {
        const auto name = m_xml.name();
        const QXmlStreamAttributes attributes = m_xml.attributes();
        if (name == u"bookmark") {
            m_bookmark = XbelBookmark();
            m_bookmark->path = localPath(attributes.value(QLatin1String("href")));
            m_bookmark->lastUsed = std::max(seconds(attributes.value(QLatin1String("visited"))),
                                            seconds(attributes.value(QLatin1String("modified"))));
            m_bookmarkDepth = m_depth;
        } else if (!m_bookmark) {
            return;
        } else if (name == u"title" && m_depth == m_bookmarkDepth + 1) {
            m_bookmark->title = m_xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
            --m_depth;
        } else if (name == u"private") {
            m_bookmark->isPrivate = true;
        } else if (name == u"application") {
            m_bookmark->applications.append(attributes.value(QLatin1String("name")).toString());
        }
    }

    void end()
    {
        if (!m_bookmark || m_depth != m_bookmarkDepth)
            return;
        if (!m_bookmark->path.isEmpty())
            m_bookmarks.append(*std::move(m_bookmark));
        m_bookmark.reset();
    }

    QXmlStreamReader m_xml;
    QList<XbelBookmark> m_bookmarks;
    std::optional<XbelBookmark> m_bookmark;
    int m_bookmarkDepth = 0;
    int m_depth = 0;
};

bool isBelow(const QString &path, const QStringList &folders)
{
    return std::any_of(folders.cbegin(), folders.cend(), [&path](const QString &folder) {
        return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
    });
}

} // namespace

QList<XbelBookmark> readBookmarks(const QByteArray &text)
{
    return Reader(text).read();
}

QList<RecentDocument> documentsUsedSince(double cutoff, QList<XbelBookmark> bookmarks,
                                         const QStringList &homes, const QString &application)
{
    std::stable_sort(bookmarks.begin(), bookmarks.end(),
                     [](const XbelBookmark &a, const XbelBookmark &b) { return a.lastUsed > b.lastUsed; });
    QList<RecentDocument> documents;
    QSet<QString> seen;
    for (const XbelBookmark &bookmark : std::as_const(bookmarks)) {
        if (bookmark.lastUsed < cutoff)
            break;
        const bool mayShow =
            !bookmark.isPrivate || bookmark.applications.contains(application, Qt::CaseInsensitive);
        if (!mayShow || !isBelow(bookmark.path, homes) || seen.contains(bookmark.path))
            continue;
        seen.insert(bookmark.path);
        const QString name = bookmark.title.isEmpty() ? QFileInfo(bookmark.path).fileName() : bookmark.title;
        documents.append({bookmark.path, name, bookmark.lastUsed});
    }
    return documents;
}

} // namespace quillbay::platform
