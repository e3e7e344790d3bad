#include "foundation/Database.h"

#include <QFile>
#include <QUrl>

#include <sqlite3.h>

namespace quillbay {

namespace {

QByteArray nameFor(const QString &path, Database::Mode mode)
{
    if (mode == Database::Mode::Immutable)
        return QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded) + "?immutable=1";
    return QFile::encodeName(path);
}

int flagsFor(Database::Mode mode)
{
    switch (mode) {
    case Database::Mode::ReadWrite:
        return SQLITE_OPEN_READWRITE;
    case Database::Mode::Create:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case Database::Mode::ReadOnly:
        return SQLITE_OPEN_READONLY;
    case Database::Mode::Immutable:
        return SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    }
    Q_UNREACHABLE();
}

} // namespace

void Database::Closer::operator()(sqlite3 *handle) const
{
    // With a valid handle this cannot fail: what is still in use is let go by its last statement.
    const int code = sqlite3_close_v2(handle);
    Q_ASSERT(code == SQLITE_OK);
    Q_UNUSED(code);
}

bool Database::open(const QString &path, Mode mode)
{
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(nameFor(path, mode).constData(), &handle, flagsFor(mode), nullptr);
    m_handle.reset(handle);
    if (!handle) {
        m_errorCode = code;
        m_errorText = QString::fromUtf8(sqlite3_errstr(code));
        return false;
    }
    if (check(code))
        return check(sqlite3_extended_result_codes(handle, 1));
    m_handle.reset();
    return false;
}

bool Database::setBusyTimeout(int milliseconds)
{
    return check(sqlite3_busy_timeout(handle(), milliseconds));
}

bool Database::setJournalKeptAtClose(bool kept)
{
    return check(sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, kept ? 1 : 0, nullptr));
}

bool Database::execute(const QByteArray &sql)
{
    return check(sqlite3_exec(handle(), sql.constData(), nullptr, nullptr, nullptr));
}

bool Database::isReadOnly() const
{
    return sqlite3_db_readonly(handle(), "main") == 1;
}

bool Database::hasMoved() const
{
    int moved = 0;
    const int code = sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return code == SQLITE_OK && moved != 0;
}

bool Database::isDamage(int code)
{
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

bool Database::check(int code)
{
    m_errorCode = code;
    m_errorText.clear();
    if (code == SQLITE_OK)
        return true;
    // A closed connection has no text of its own, and a failed open leaves the extended code with the handle.
    m_errorText =
        m_handle ? QString::fromUtf8(sqlite3_errmsg(handle())) : QString::fromUtf8(sqlite3_errstr(code));
    return false;
}

} // namespace quillbay
