#include "SqlTransaction.h"

#include <sqlite3.h>

SqlTransaction::SqlTransaction(sqlite3* db)
    : m_db(db)
{
    m_active = db && sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqlTransaction::~SqlTransaction()
{
    if (m_active)
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool SqlTransaction::Commit()
{
    if (!m_active)
        return false;
    if (sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        return false; // still active: the destructor rolls back
    m_active = false;
    return true;
}
