#pragma once

// A connection to a project store on a database server. The server's password is
// never passed here: the client library finds it in the user's own password file
// or environment.
#include "SqlDb.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <vector>

struct pg_conn;
struct pg_result;

class PgDb : public SqlDb
{
public:
    struct Params
    {
        QString host;
        int port = 5432;
        QString database;
        QString user;
    };

    // Connects; null with `error` set when the server cannot be reached or
    // refuses the user.
    static std::unique_ptr<PgDb> Connect(const Params& params, QString* error);
    ~PgDb() override;
    PgDb(const PgDb&) = delete;
    PgDb& operator=(const PgDb&) = delete;

    SqlEngine Engine() const override { return SqlEngine::Server; }
    std::unique_ptr<SqlCursor> Prepare(const char* sql) override;
    bool Execute(const char* sql) override;
    bool InTransaction() const override { return m_inTransaction; }
    const char* BeginSql() const override { return "BEGIN"; }
    QString Message() const override { return m_message; }
    qint64 TotalChanges() const override { return m_changes; }
    void SetBusyTimeout(int milliseconds) override;

    // The last failure's five-character state code ("42P01" …); empty when the
    // connection itself failed.
    QByteArray LastState() const { return m_state; }
    bool IsConnected() const;

    // Runs `sql` ("$N" binds, given as text or null) as a statement this
    // connection keeps prepared. Null with Message() set on failure; the caller
    // owns the result.
    pg_result* Run(const QByteArray& sql, const std::vector<unsigned>& types,
        const std::vector<const char*>& values, const std::vector<int>& lengths);
    // Records the outcome of a result (null: the connection failed): false with the
    // message set when it failed.
    bool Check(pg_result* result);

private:
    PgDb(pg_conn* conn, const Params& params)
        : m_conn(conn)
        , m_params(params)
    { }
    bool Usable();
    void AfterCommand(const char* sql);
    void NoteFailure(pg_result* result);

    pg_conn* m_conn;
    Params m_params;
    QHash<QByteArray, QByteArray> m_prepared; // statement text and types -> name
    QString m_message;
    QByteArray m_state;
    qint64 m_changes = 0;
    int m_busyTimeout = 5000;
    bool m_inTransaction = false;
};
