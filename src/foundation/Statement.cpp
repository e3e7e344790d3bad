#include "foundation/Statement.h"

#include "foundation/Database.h"

#include <cmath>

#include <sqlite3.h>

namespace quillbay {

void Statement::Finalizer::operator()(sqlite3_stmt *handle) const
{
    // The code repeats the failure of the last step, which `step` has answered with already.
    sqlite3_finalize(handle);
}

Statement::Statement(const Database &database, const QByteArray &sql)
{
    if (!database.isOpen()) {
        fail(SQLITE_MISUSE, "the database is not open");
        return;
    }
    sqlite3_stmt *handle = nullptr;
    const int code = sqlite3_prepare_v2(database.handle(), sql.constData(), static_cast<int>(sql.size()),
                                        &handle, nullptr);
    m_handle.reset(handle);
    if (code != SQLITE_OK)
        fail(code, sqlite3_errmsg(database.handle()));
    else if (!handle)
        fail(SQLITE_MISUSE, "the statement is empty");
}

Statement &Statement::bindNull(int index)
{
    return m_handle ? checkBound(sqlite3_bind_null(m_handle.get(), index)) : *this;
}

Statement &Statement::bindInteger(int index, qint64 value)
{
    return m_handle ? checkBound(sqlite3_bind_int64(m_handle.get(), index, value)) : *this;
}

Statement &Statement::bindDouble(int index, double value)
{
    if (std::isnan(value)) {
        fail(SQLITE_MISMATCH, "not a number");
        return *this;
    }
    return m_handle ? checkBound(sqlite3_bind_double(m_handle.get(), index, value)) : *this;
}

Statement &Statement::bindText(int index, const QString &value)
{
    if (!m_handle)
        return *this;
    const QByteArray utf8 = value.toUtf8();
    m_bound.append(utf8);
    return checkBound(sqlite3_bind_text64(m_handle.get(), index, utf8.constData(),
                                          static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC,
                                          SQLITE_UTF8));
}

Statement &Statement::bindBlob(int index, const QByteArray &value)
{
    if (!m_handle)
        return *this;
    m_bound.append(value);
    // constData() of an empty array points to a terminator: never null, which SQLite would take for NULL.
    return checkBound(sqlite3_bind_blob64(m_handle.get(), index, value.constData(),
                                          static_cast<sqlite3_uint64>(value.size()), SQLITE_STATIC));
}

Statement::Result Statement::step()
{
    if (m_errorCode != SQLITE_OK)
        return Result::Error;
    const int code = sqlite3_step(m_handle.get());
    if (code == SQLITE_ROW)
        return Result::Row;
    if (code == SQLITE_DONE)
        return Result::Done;
    fail(code, sqlite3_errmsg(sqlite3_db_handle(m_handle.get())));
    return Result::Error;
}

bool Statement::reset()
{
    if (!m_handle)
        return false;
    m_errorCode = SQLITE_OK;
    m_errorText.clear();
    const int ended = sqlite3_reset(m_handle.get());
    const int cleared = sqlite3_clear_bindings(m_handle.get());
    m_bound.clear();
    return ended == SQLITE_OK && cleared == SQLITE_OK;
}

Statement::Type Statement::type(int column) const
{
    switch (sqlite3_column_type(m_handle.get(), column)) {
    case SQLITE_INTEGER:
        return Type::Integer;
    case SQLITE_FLOAT:
        return Type::Double;
    case SQLITE_TEXT:
        return Type::Text;
    case SQLITE_BLOB:
        return Type::Blob;
    default:
        return Type::Null;
    }
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_handle.get(), column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_handle.get(), column);
}

QString Statement::text(int column) const
{
    return QString::fromUtf8(utf8(column));
}

QByteArrayView Statement::utf8(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_handle.get(), column));
    return {bytes, bytes ? sqlite3_column_bytes(m_handle.get(), column) : 0};
}

QByteArray Statement::blob(int column) const
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_handle.get(), column));
    // An empty blob has no address; the empty literal keeps it apart from a null array.
    return bytes ? QByteArray(bytes, sqlite3_column_bytes(m_handle.get(), column)) : QByteArray("", 0);
}

Statement &Statement::checkBound(int code)
{
    if (code != SQLITE_OK)
        fail(code, sqlite3_errstr(code));
    return *this;
}

void Statement::fail(int code, const char *text)
{
    if (m_errorCode != SQLITE_OK)
        return;
    m_errorCode = code;
    m_errorText = QString::fromUtf8(text);
}

} // namespace quillbay
