#pragma once

// One write transaction. Begins IMMEDIATE, so a store locked by another program is
// reported before anything is changed; rolls back unless Commit() succeeded. Opened
// while another transaction runs, it is a savepoint inside that one.
struct sqlite3;

class SqlTransaction
{
public:
    explicit SqlTransaction(sqlite3* db);
    ~SqlTransaction();
    SqlTransaction(const SqlTransaction&) = delete;
    SqlTransaction& operator=(const SqlTransaction&) = delete;

    bool IsActive() const { return m_active; }
    bool Commit();

private:
    sqlite3* m_db;
    bool m_active = false;
    bool m_nested = false;
};
