#include "SqlTransaction.h"

#include "SqlDb.h"
#include "SqlStatement.h"

SqlTransaction::SqlTransaction(SqlDb* db)
    : m_db(db)
{
    if (!db)
        return;
    // Inside a write group (or another transaction) this one becomes a savepoint:
    // its commit is kept only when the enclosing one commits.
    m_nested = db->InTransaction();
    m_active = db->Execute(m_nested ? "SAVEPOINT qv_nested" : db->BeginSql());
}

SqlTransaction::~SqlTransaction()
{
    if (!m_active)
        return;
    if (m_nested)
        m_db->Execute("ROLLBACK TO qv_nested; RELEASE qv_nested");
    else
        m_db->Execute("ROLLBACK");
}

bool SqlTransaction::Commit()
{
    if (!m_active)
        return false;
    if (!m_nested && !SqlStatement::CountWrite())
        return false; // an injected failure: the destructor rolls back
    if (!m_db->Execute(m_nested ? "RELEASE qv_nested" : "COMMIT"))
        return false; // still active: the destructor rolls back
    m_active = false;
    return true;
}
