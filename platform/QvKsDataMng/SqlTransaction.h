#pragma once

// One write transaction; rolls back unless Commit() succeeded. On the store file it
// begins IMMEDIATE, so a store locked by another program is reported before
// anything is changed. Opened while another transaction runs, it is a savepoint
// inside that one.
class SqlDb;

class SqlTransaction
{
public:
    explicit SqlTransaction(SqlDb* db);
    ~SqlTransaction();
    SqlTransaction(const SqlTransaction&) = delete;
    SqlTransaction& operator=(const SqlTransaction&) = delete;

    bool IsActive() const { return m_active; }
    bool Commit();

private:
    SqlDb* m_db;
    bool m_active = false;
    bool m_nested = false;
};
