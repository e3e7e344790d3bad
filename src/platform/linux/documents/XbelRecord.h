#pragma once

#include "platform/RecentDocuments.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// One entry of a record of recently used documents.
struct XbelBookmark
{
    QString path;  ///< Absolute and clean.
    QString title; ///< Null where it has none.
    /// Last visited or changed, seconds since 1970; 0 where it does not say.
    double lastUsed = 0;
    /// Only the applications that registered it may show it.
    bool isPrivate = false;
    QStringList applications; ///< Names of those.
};

/// The local files in the text of a "recently-used.xbel": XBEL 1.0 with the desktop bookmark extension, as
/// the toolkits keep it. A text that is broken anywhere, or that declares entities, has none.
QList<XbelBookmark> readBookmarks(const QByteArray &text);

/// Those below one of the folders `homes` that were used at or after `cutoff` and that `application` may
/// show, the last used first and each path once.
QList<RecentDocument> documentsUsedSince(double cutoff, QList<XbelBookmark> bookmarks,
                                         const QStringList &homes, const QString &application);

} // namespace quillbay::platform
