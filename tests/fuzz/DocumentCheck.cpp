#include "fuzz/Checks.h"
#include "platform/linux/documents/XbelRecord.h"

#include <QDateTime>
#include <QDir>
#include <QUrl>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

namespace quillbay::testing {

namespace {

using platform::XbelBookmark;

/// Empty where XML cannot say it.
QByteArray written(const QList<XbelBookmark> &bookmarks)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("xbel"));
    for (const XbelBookmark &bookmark : bookmarks) {
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(qRound64(bookmark.lastUsed * 1000), Qt::UTC);
        xml.writeStartElement(QStringLiteral("bookmark"));
        xml.writeAttribute(QStringLiteral("href"),
                           QString::fromLatin1(QUrl::fromLocalFile(bookmark.path).toEncoded()));
        xml.writeAttribute(QStringLiteral("visited"), time.toString(Qt::ISODateWithMs));
        if (!bookmark.title.isNull())
            xml.writeTextElement(QStringLiteral("title"), bookmark.title);
        if (bookmark.isPrivate)
            xml.writeEmptyElement(QStringLiteral("private"));
        for (const QString &application : bookmark.applications) {
            xml.writeEmptyElement(QStringLiteral("application"));
            xml.writeAttribute(QStringLiteral("name"), application);
        }
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return xml.hasError() ? QByteArray() : text;
}

bool isSame(const XbelBookmark &a, const XbelBookmark &b)
{
    return a.path == b.path && a.title == b.title && a.lastUsed == b.lastUsed && a.isPrivate == b.isPrivate &&
           a.applications == b.applications;
}

} // namespace

const char *checkDocuments(const QByteArray &input)
{
    const QList<XbelBookmark> bookmarks = platform::readBookmarks(input);
    for (const XbelBookmark &bookmark : bookmarks) {
        if (!bookmark.path.startsWith(u'/') || bookmark.path.contains(QChar(u'\0')) ||
            QDir::cleanPath(bookmark.path) != bookmark.path)
            return "a path is not absolute and clean";
    }
    if (const QByteArray text = written(bookmarks); !text.isEmpty()) {
        const QList<XbelBookmark> again = platform::readBookmarks(text);
        if (!std::equal(bookmarks.cbegin(), bookmarks.cend(), again.cbegin(), again.cend(), isSame))
            return "reads back as something else";
    }
    double last = std::numeric_limits<double>::infinity();
    for (const auto &document : platform::documentsUsedSince(0, bookmarks, {QStringLiteral("/home/u")},
                                                             QStringLiteral("quillbay"))) {
        if (!document.path.startsWith(QLatin1String("/home/u/")) || document.displayName.isEmpty())
            return "a document outside the home folder, or without a name";
        if (document.lastUsed < 0 || document.lastUsed > last)
            return "not the last used first";
        last = document.lastUsed;
    }
    return nullptr;
}

} // namespace quillbay::testing
