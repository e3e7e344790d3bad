#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <memory>

struct sqlite3_stmt;

namespace quillbay {

class Database;

/// One prepared statement of a `Database`, finalised when it goes. Use: bind, step until it is not a row,
/// reset.
///
/// An error is never lost: a statement that could not be prepared, or a value that could not be bound, makes
/// `step` answer `Error` without running anything, and `errorCode` and `errorText` keep the first failure
/// until `reset`. A statement that stands on a row keeps a read open, which holds up the other connections'
/// housekeeping and shows this one an old state: reset as soon as the row is read.
class Statement
{
public:
    enum class Result {
        Row,   ///< A row is there to be read.
        Done,  ///< The end, without an error.
        Error, ///< The end, with one.
    };
    enum class Type { Null, Integer, Double, Text, Blob };

    /// Prepares the first statement of `sql`.
    Statement(const Database &database, const QByteArray &sql);

    bool isPrepared() const { return m_handle != nullptr; }

    /// Binding, by the position of the parameter, from 1. The value is shared until `reset`, not copied. Text
    /// goes in as UTF-8, embedded NULs included; an empty value is empty, not null; a double that is not a
    /// number would become null, and is refused.
    Statement &bindNull(int index);
    Statement &bindInteger(int index, qint64 value);
    Statement &bindDouble(int index, double value);
    Statement &bindText(int index, const QString &value);
    Statement &bindBlob(int index, const QByteArray &value);

    [[nodiscard]] Result step();
    /// Back to before the first row, without bindings and without error. False when ending the run failed,
    /// which for a run that had failed already is no news.
    bool reset();

    /// The columns of the current row, by position, from 0. Asking for another type than `type` converts as
    /// SQLite does.
    Type type(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;
    QString text(int column) const;
    /// The text as it stands in the row, until the next `step` or `reset`.
    QByteArrayView utf8(int column) const;
    QByteArray blob(int column) const;

    /// SQLite's extended result code of the first failure; 0 when there was none.
    int errorCode() const { return m_errorCode; }
    QString errorText() const { return m_errorText; }

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *handle) const;
    };

    Statement &checkBound(int code);
    void fail(int code, const char *text);

    QList<QByteArray> m_bound; ///< What SQLite reads from; before the statement, so that it outlives it.
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
    int m_errorCode = 0;
    QString m_errorText;
};

} // namespace quillbay
