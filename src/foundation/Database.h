#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct sqlite3;

namespace quillbay {

/// A connection to one SQLite database, closed when it goes. The other half of the wrapper is `Statement`.
///
/// A failed call answers false, and `errorCode` and `errorText` then tell why until the next call. The text
/// is copied out at the moment of the failure, since SQLite keeps one per connection and overwrites it.
///
/// Thread: one thread at a time; two threads open a connection each. Never open and close the file of a
/// connected database by other means in the same process: that drops SQLite's locks on it.
class Database
{
public:
    enum class Mode {
        ReadWrite, ///< Read and write. Falls back to reading where writing is not allowed.
        Create,    ///< The same, and made where missing.
        ReadOnly,  ///< Read, with the locks and the journal of a file that others may be writing.
        Immutable, ///< Read a file that cannot change: no locks, and what only its journal holds stays
                   ///< unseen.
    };

    Database() = default;

    /// Opens the file at `path` (":memory:" for one without a file); a connection held before is closed.
    /// SQLite looks at the content no sooner than the first statement, so a damaged file shows there.
    [[nodiscard]] bool open(const QString &path, Mode mode);
    /// Closes the connection. Statements that still live keep it from going until they go.
    void close() { m_handle.reset(); }
    bool isOpen() const { return m_handle != nullptr; }

    /// How long a statement waits for another connection's lock before it fails, in milliseconds.
    [[nodiscard]] bool setBusyTimeout(int milliseconds);
    /// Whether the close leaves the journal and the file as they are. Otherwise the last connection to close
    /// moves the journal's content into the file, and removes it.
    [[nodiscard]] bool setJournalKeptAtClose(bool kept);
    /// Runs statements that give no rows, or whose rows do not matter, up to the first failure.
    [[nodiscard]] bool execute(const QByteArray &sql);

    /// Whether the file allows no writing.
    bool isReadOnly() const;
    /// Whether another file, or none, is now at the path the database was opened by.
    bool hasMoved() const;

    /// SQLite's extended result code of the last failed call of this object; 0 when it succeeded.
    int errorCode() const { return m_errorCode; }
    QString errorText() const { return m_errorText; }
    /// Whether a result code says that the file is damaged or no database at all, rather than out of reach.
    static bool isDamage(int code);

    sqlite3 *handle() const { return m_handle.get(); }

private:
    struct Closer
    {
        void operator()(sqlite3 *handle) const;
    };

    bool check(int code);

    std::unique_ptr<sqlite3, Closer> m_handle;
    int m_errorCode = 0;
    QString m_errorText;
};

} // namespace quillbay
