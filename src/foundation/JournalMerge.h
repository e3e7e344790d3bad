#pragma once

#include <QString>

#include <atomic>
#include <memory>

namespace quillbay {

class Database;

/// Moves what a write-ahead journal holds into its database, away from the thread that writes: the disk is
/// waited for there, which takes tens of milliseconds.
///
/// Takes the place of SQLite's own merging at the end of a write. The journal stays valid throughout: who is
/// killed, or writes meanwhile, loses nothing. Should merging fail again and again, the writer does it itself
/// once the journal has grown to `mostPages`.
///
/// Thread: the one of the database. The work is done on the global pool, through a connection of its own.
class JournalMerge
{
public:
    /// Watches the journal of an open database, which must outlive this object; `path` is its file.
    JournalMerge(Database &database, const QString &path);
    ~JournalMerge();
    JournalMerge(const JournalMerge &) = delete;
    JournalMerge &operator=(const JournalMerge &) = delete;

    /// After a write: starts a merge if the journal has grown enough and none is under way.
    void afterWrite();

    static constexpr int startPages = 512;
    static constexpr int mostPages = 16 * startPages;

private:
    Database &m_database;
    QString m_path;
    int m_pages = 0; ///< In the journal after the last write.
    std::shared_ptr<std::atomic_bool> m_isMerging = std::make_shared<std::atomic_bool>(false);
};

} // namespace quillbay
