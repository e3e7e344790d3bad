#include "foundation/JournalMerge.h"

#include "foundation/Database.h"

#include <QThreadPool>

#include <sqlite3.h>

namespace quillbay {

JournalMerge::JournalMerge(Database &database, const QString &path)
    : m_database(database)
    , m_path(path)
{
    const auto noteSize = [](void *pages, sqlite3 *, const char *, int count) {
        *static_cast<int *>(pages) = count;
        return SQLITE_OK;
    };
    sqlite3_wal_hook(m_database.handle(), noteSize, &m_pages);
}

JournalMerge::~JournalMerge()
{
    if (m_database.isOpen())
        sqlite3_wal_hook(m_database.handle(), nullptr, nullptr);
}

void JournalMerge::afterWrite()
{
    if (m_pages < startPages)
        return;
    if (m_pages >= mostPages) {
        m_pages = 0;
        sqlite3_wal_checkpoint_v2(m_database.handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        return;
    }
    if (m_isMerging->exchange(true))
        return;
    QThreadPool::globalInstance()->start([path = m_path, isMerging = m_isMerging] {
        Database database;
        // A failure leaves the journal as it is, and the next write tries again.
        if (database.open(path, Database::Mode::ReadWrite) && database.setJournalKeptAtClose(true))
            [[maybe_unused]]
            const bool isMerged = database.execute("PRAGMA wal_checkpoint(PASSIVE)");
        isMerging->store(false);
    });
}

} // namespace quillbay
