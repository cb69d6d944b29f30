#pragma once

// One connection to a project store: the embedded file beside the drawings, or a
// database on a server that a team shares. Everything above this speaks the same
// SQL to both; the few places where the engines differ ask Engine().
#include <QString>
#include <QtGlobal>

#include <memory>

class SqlCursor;

enum class SqlEngine { File, Server };

class SqlDb
{
public:
    virtual ~SqlDb() = default;

    virtual SqlEngine Engine() const = 0;
    // A statement of `sql` ("?" and "?N" mark binds); null when it does not compile,
    // with Message() telling why.
    virtual std::unique_ptr<SqlCursor> Prepare(const char* sql) = 0;
    // Runs SQL text of one or more statements without binds.
    virtual bool Execute(const char* sql) = 0;
    // Whether a transaction is open on this connection.
    virtual bool InTransaction() const = 0;
    // How the outermost write transaction begins.
    virtual const char* BeginSql() const = 0;
    // The engine's words on the last failure.
    virtual QString Message() const = 0;
    // Rows inserted, changed or deleted through this connection since it opened.
    virtual qint64 TotalChanges() const = 0;
    // How long a write waits for another writer's lock before it fails (ms).
    virtual void SetBusyTimeout(int milliseconds) = 0;
};
