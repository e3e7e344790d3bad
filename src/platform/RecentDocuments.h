#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace quillbay::platform {

/// One document that the user opened.
struct RecentDocument
{
    QString path;        ///< Absolute.
    QString displayName; ///< What the desktop calls it; the file's name where it has no other.
    double lastUsed = 0; ///< Seconds since 1970.
};

/// The desktop's own record of recently used documents.
///
/// Thread: lives on the thread it was made on; both signals are sent there. Reading happens elsewhere.
class RecentDocuments : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Gathers the documents in the user's home folder that were used at or after `cutoff` (seconds since
    /// 1970) and still exist, the last used first, no more than `most`. Answers by `gathered`. Ends the query
    /// before: only the newest one answers. A record that is missing or broken holds no documents.
    virtual void query(double cutoff, int most) = 0;
    /// Ends a query under way, which then does not answer.
    virtual void stop() = 0;

Q_SIGNALS:
    void gathered(const QList<quillbay::platform::RecentDocument> &documents);
    /// The record has changed since the last query: what it gathered may be out of date.
    void changed();
};

} // namespace quillbay::platform
