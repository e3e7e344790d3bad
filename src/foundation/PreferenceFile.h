#pragma once

#include "foundation/DatabaseFiles.h"
#include "foundation/Statement.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace quillbay {

/// The database that preferences are kept in, and everything that can happen to it. `PreferenceStore` is what
/// the rest of the program uses.
///
/// Layout, version 1, in `user_version`:
///
///     preferences(domain TEXT, key TEXT, type TEXT, value BLOB, PRIMARY KEY(domain, key))
///
/// Not WITHOUT ROWID, which is read and written as well: there the values stand in the index, and a look-up
/// of any key reads every long value that it passes, a megabyte of folders among them.
///
/// No value is held in memory: another process may write, and a read by key costs some microseconds.
///
/// A file that is no database, is damaged, or has another layout without saying so is set aside, and an empty
/// one takes its place: at the opening, and later when a call comes upon a damaged page. This happens under a
/// lock, and looks again once it is held, so that of several processes one does it. A new file is made under
/// another name, and complete when it gets its own: SQLite finds journals by name, and a process that still
/// has the old file open would play a new one's back into it.
///
/// A file that another one took the place of, or that was removed, is let go, and the call repeated on the
/// new one; a change is therefore answered as kept only when it is in the file that now has the name.
///
/// A file that cannot be written or made, or has a later layout, is left as it is. What can be read from it
/// is copied to a database in memory, which answers for the rest of the session.
///
/// Each of these prints one line. Thread: the one that made it.
class PreferenceFile
{
public:
    /// What a row holds; `monostate` for no such row. Booleans are integers.
    using Value = std::variant<std::monostate, qint64, double, QString, QByteArray>;

    explicit PreferenceFile(const QString &path);
    ~PreferenceFile();
    PreferenceFile(const PreferenceFile &) = delete;
    PreferenceFile &operator=(const PreferenceFile &) = delete;

    /// Changes whenever another connection has written, or another file has taken the place of this one:
    /// while it stays, the file holds what was last read from it or written to it here. Costs a few
    /// microseconds; nothing where the file cannot be asked.
    struct Stamp
    {
        qint64 attachment;
        qint64 dataVersion;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    std::optional<Stamp> stamp();

    Value read(const QString &domain, const QString &key, QLatin1StringView type);
    /// The UTF-8 of a row that holds text, as it stands there; `known` itself, and no copy, where it is the
    /// same.
    std::optional<QByteArray> readText(const QString &domain, const QString &key, QLatin1StringView type,
                                       const QByteArray &known);
    /// Both answer whether the change is committed to the file.
    bool write(const QString &domain, const QString &key, QLatin1StringView type, const Value &value);
    bool remove(const QString &domain, const QString &key);

    const QString &path() const { return m_givenPath; }
    bool isInMemory() const { return m_isInMemory; }

private:
    struct Connection;
    enum class State { Ready, Missing, Damaged, Later, Unusable };
    /// What a failed call said of the file: nothing, that a page is damaged (to be checked, since another
    /// process may have put a new file there by now), or the same once more after the check had found
    /// nothing.
    enum class Suspicion { None, Page, Proven };
    using Use = std::function<void(Statement &)>;

    void attach(Suspicion suspicion);
    State connect();
    State settle(Suspicion suspicion);
    State make();
    State setAside();
    void continueInMemory();
    void copyToMemory();

    Statement::Result run(std::optional<Statement> Connection::*statement, const Use &bind, const Use &onRow);
    void report(const QString &what);

    QString m_givenPath;
    DatabaseFiles m_files;
    std::unique_ptr<Connection> m_connection;
    bool m_isInMemory = false;
    qint64 m_attachments = 0;
    QString m_problem; ///< Why the last state was not Ready.
    QString m_reported;
};

} // namespace quillbay
