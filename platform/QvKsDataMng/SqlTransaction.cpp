#include "SqlTransaction.h"

#include <sqlite3.h>

#include "SqlStatement.h"

SqlTransaction::SqlTransaction(sqlite3* db)
    : m_db(db)
{
    if (!db)
        return;
    // Inside a write group (or another transaction) this one becomes a savepoint:
    // its commit is kept only when the enclosing one commits.
    m_nested = sqlite3_get_autocommit(db) == 0;
    const char* begin = m_nested ? "SAVEPOINT qv_nested" : "BEGIN IMMEDIATE";
    m_active = sqlite3_exec(db, begin, nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqlTransaction::~SqlTransaction()
{
    if (!m_active)
        return;
    if (m_nested)
        sqlite3_exec(m_db, "ROLLBACK TO qv_nested; RELEASE qv_nested", nullptr, nullptr, nullptr);
    else
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool SqlTransaction::Commit()
{
    if (!m_active)
        return false;
    if (!m_nested && !SqlStatement::CountWrite())
        return false; // an injected failure: the destructor rolls back
    const char* end = m_nested ? "RELEASE qv_nested" : "COMMIT";
    if (sqlite3_exec(m_db, end, nullptr, nullptr, nullptr) != SQLITE_OK)
        return false; // still active: the destructor rolls back
    m_active = false;
    return true;
}
