#pragma once

// A connection to the embedded store file of a project folder.
#include "SqlDb.h"

struct sqlite3;

class SqliteDb : public SqlDb
{
public:
    // Takes over an open handle and closes it when destroyed.
    explicit SqliteDb(sqlite3* db)
        : m_db(db)
    { }
    ~SqliteDb() override;
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;

    sqlite3* Handle() const { return m_db; }

    SqlEngine Engine() const override { return SqlEngine::File; }
    std::unique_ptr<SqlCursor> Prepare(const char* sql) override;
    bool Execute(const char* sql) override;
    bool InTransaction() const override;
    // IMMEDIATE: a store locked by another program is reported before anything
    // is changed.
    const char* BeginSql() const override { return "BEGIN IMMEDIATE"; }
    QString Message() const override;
    qint64 TotalChanges() const override;
    void SetBusyTimeout(int milliseconds) override;

private:
    sqlite3* m_db;
};
