#include "SqliteDb.h"

#include "SqliteCursor.h"

#include <sqlite3.h>

SqliteDb::~SqliteDb()
{
    sqlite3_close(m_db);
}

std::unique_ptr<SqlCursor> SqliteDb::Prepare(const char* sql)
{
    sqlite3_stmt* stmt = nullptr;
    if (!m_db || sqlite3_prepare_v2(m_db, sql, -1, &stmt, nullptr) != SQLITE_OK || !stmt) {
        sqlite3_finalize(stmt);
        return nullptr;
    }
    return std::make_unique<SqliteCursor>(stmt);
}

bool SqliteDb::Execute(const char* sql)
{
    return sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool SqliteDb::InTransaction() const
{
    return sqlite3_get_autocommit(m_db) == 0;
}

QString SqliteDb::Message() const
{
    return QString::fromUtf8(sqlite3_errmsg(m_db));
}

qint64 SqliteDb::TotalChanges() const
{
    return qint64(sqlite3_total_changes64(m_db));
}

void SqliteDb::SetBusyTimeout(int milliseconds)
{
    sqlite3_busy_timeout(m_db, milliseconds);
}
