#pragma once

#include "platform/RecentDocuments.h"
#include "platform/linux/watching/InotifyFolderWatch.h"

#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <cstdint>
#include <optional>

namespace quillbay::platform {

/// The record that the toolkits keep in "recently-used.xbel" in the user's data folder.
///
/// The record and the documents in it are looked at on a thread of its own, one query after the other, which
/// ends a second after the last. The folder is watched from the first query on; a folder that appears later
/// is found by the next query. Programs rewrite the record under a temporary name and rename it, and other
/// files of the folder change as well, so after a change there the record itself is compared with the one
/// last read.
class XbelRecentDocuments final : public RecentDocuments
{
    Q_OBJECT

public:
    /// A larger record counts as broken.
    static constexpr qint64 largestRecord = 16 * 1024 * 1024;
    /// Milliseconds in which changes of the folder are taken together.
    static constexpr int settleDelay = 250;

    /// The record's path, and the folder whose documents count.
    XbelRecentDocuments(const QString &record, const QString &home, QObject *parent = nullptr);
    /// Those of the session.
    explicit XbelRecentDocuments(QObject *parent = nullptr);
    /// Waits for a reading under way.
    ~XbelRecentDocuments() override;

    void query(double cutoff, int most) override;
    void stop() override { ++m_query; }

private:
    /// Which state of the file it is; nothing where there is none.
    struct Stamp
    {
        std::uint64_t device;
        std::uint64_t inode;
        std::int64_t size;
        std::int64_t seconds;
        std::int64_t nanoseconds;
        bool operator==(const Stamp &) const = default;
    };
    struct Answer
    {
        QList<RecentDocument> documents;
        std::optional<Stamp> stamp;
    };

    static std::optional<Stamp> stampOf(int descriptor);
    Answer gather(double cutoff, int most) const; ///< On the pool's thread.
    void compare();

    const QString m_record;
    const QString m_home;
    std::atomic<int> m_query = 0;
    std::optional<Stamp> m_stamp; ///< Of the record last told of.
    InotifyFolderWatch m_watch;
    QTimer m_settle;
    QThreadPool m_pool;
};

} // namespace quillbay::platform
